// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// A repeating activity that refreshes the catalogue at moments which the system picks, near the chosen interval. At
/// most one is in force, and none outlives the process. Each run has a context and a repository of its own; what it
/// stores raises alerts like any refresh. Never instantiated. Main thread only.
class MacBackgroundRefreshManager
{
public:
    MacBackgroundRefreshManager() = delete;

    /// Replaces the activity in force by one of this interval, in seconds.
    static void scheduleRefresh(double interval);
    /// Ends the activity in force, if any.
    static void cancel();
    /// Brings the activity in line with the user's refresh interval: ended where refreshing is manual.
    static void applySettings();
};
