// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <functional>

/// A repeating activity whose exact moments the system picks. Set everything before scheduleWithBlock().
class BackgroundActivityScheduler
{
public:
    enum class Result { finished, deferred };
    enum class QualityOfService { utility, background };
    /// Takes the outcome of one run. To be called once for each run.
    using CompletionHandler = std::function<void(Result)>;

    virtual ~BackgroundActivityScheduler() = default;

    virtual void setRepeats(bool repeats) = 0;
    /// Seconds from one run to the next.
    virtual void setInterval(double seconds) = 0;
    /// Allowed deviation from the interval, in seconds.
    virtual void setTolerance(double seconds) = 0;
    virtual void setQualityOfService(QualityOfService quality) = 0;
    /// Starts the activity: `block` is called at each due time, from the event loop and never inside this call.
    virtual void scheduleWithBlock(std::function<void(CompletionHandler)> block) = 0;
    /// Ends the activity for good: `block` is not called again, and scheduleWithBlock() does nothing from now on.
    virtual void invalidate() = 0;
};
