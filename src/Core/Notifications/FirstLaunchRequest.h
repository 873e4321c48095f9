// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Asks for the permission to notify, once in the life of the installation, and switches alerts on or off by the
/// answer. Each root of the program calls it when it appears; it returns at once.
void requestNotificationPermissionOnFirstLaunch();
