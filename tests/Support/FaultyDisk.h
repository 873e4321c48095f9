// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <functional>

/// What becomes of a call by which SQLite reaches its files.
enum class DiskFault {
    none,
    /// The process is killed in place of a change of a file.
    kill,
    /// The process is killed when half of a write is done.
    killMidway,
    /// The power goes in place of a change of a file: the process dies, and whatever was written since the file was
    /// last synchronised is undone.
    powerCut,
    /// This call and all later ones that write find the disk full.
    full,
    /// This one call fails, reading or writing.
    error,
    /// This one write is done by half, then the disk is full.
    shortWrite,
};

/// The disk under every SQLite file that the process opens from the first arm() on. One fault at a time.
namespace FaultyDisk {
/// Lets `fault` strike at the call of this number, counted from now: the first is 1.
void arm(DiskFault fault, int call);
/// No more faults. True when the fault of the last arm() has struck.
bool disarm();
/// Calls `pass` in place of every pause that SQLite makes while another has the store locked.
void whenPausing(const std::function<void()> &pass);
}
