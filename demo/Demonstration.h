// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "DemoCatalogue.h"
#include "orvaliaApp.h"

/// Runs the program over a made-up institute until its last window is closed, and gives its exit status. Store,
/// settings and permission answers lie in a temporary folder and are forgotten at the end; notifications and positions
/// are the desktop's own.
int demonstrate(DemoCatalogue::Pace pace, orvaliaApp::Root root);
