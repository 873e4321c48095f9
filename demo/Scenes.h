// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Stage.h"

#include <QSize>

#include <vector>

/// One picture of the tour: a name for its file, and the steps that lead to what it shows. A scene begins with nothing
/// stored, nothing saved and no page queued.
struct Scene
{
    using Step = std::function<void(Stage &)>;

    const char *name;
    std::vector<Step> steps;
    /// Of the window, where the scene has just one; else it is shown in every size.
    QSize onlySize = {};
};

/// Every screen in every state, in the order in which the program shows them; at last the controls by themselves.
const std::vector<Scene> &scenes();
