#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Each rule of lint.py, with what it lets through and what it does not."""
import unittest

import lint

SPDX = "// SPDX-License-Identifier: GPL-3.0-or-later\n"

# rule, path, text, how many faults
CASES = [
    ("includes", "src/Core/Models/A.cpp", '#include "Core/Models/Region.h"\n#include "Platform/Support/Async.h"\n', 0),
    ("includes", "src/Core/Models/A.cpp", '#include "A.moc"\n#include <QColor>\n', 0),
    ("includes", "src/Core/Models/A.cpp", '#include "Core/Persistence/ModelContext.h"\n', 1),
    ("includes", "src/Core/Models/A.cpp", '#include "Region.h"\n#include <Core/Models/Region.h>\n', 2),
    ("includes", "src/Core/ViewModels/A.cpp", '#include "Core/Repositories/EarthquakeRepository.h"\n', 0),
    ("includes", "src/Core/ViewModels/A.cpp", "#include <QQmlEngine>\n#include <QtQuick/QQuickItem>\n", 2),
    ("includes", "src/Core/A.cpp", '#include "Core/Models/Region.h"\n', 1),
    ("includes", "src/Platform/Map/A.cpp", '#include <QQuickItem>\n#include "Core/Models/Region.h"\n', 1),
    ("includes", "src/iOS/Mapa/A.cpp", '#include "iOS/Mapa/MapScreen.h"\n#include "iOS/Shared/Icon.h"\n', 0),
    ("includes", "src/iOS/Mapa/A.cpp", '#include "iOS/Stats/StatsScreen.h"\n#include "macOS/MainWindows.h"\n', 2),
    ("includes", "src/iOS/Shared/A.cpp", '#include "iOS/Mapa/MapScreen.h"\n', 1),
    ("includes", "src/iOS/MainTabScreen.cpp", '#include "iOS/Mapa/MapScreen.h"\n', 0),
    ("includes", "src/main.cpp", '#include "Support/World.h"\n', 1),
    ("includes", "tests/core/A.cpp", '#include "Support/World.h"\n#include "Core/Models/Region.h"\n', 0),
    ("first", "src/Core/Models/Region.cpp", SPDX + '#include "Core/Models/Region.h"\n#include <QColor>\n', 0),
    ("first", "src/Core/Models/Region.cpp", SPDX + '#include <QColor>\n#include "Core/Models/Region.h"\n', 1),
    ("first", "src/main.cpp", "#include <QGuiApplication>\n", 0),
    ("imports", "src/iOS/Mapa/A.qml", "import QtQuick\nimport orvalia.Shared\n", 0),
    ("imports", "src/iOS/Shared/A.qml", "import orvalia.Shell\n", 1),
    ("licence", "src/A.cpp", SPDX, 0),
    ("licence", "src/A.cpp", "\n\n\n" + SPDX, 1),
    ("licence", "run", "#!/bin/sh\n", 1),
    ("licence", "src/CMakeLists.txt", "", 1),
    ("licence", "README.md", "", 0),
    ("words", "src/A.cpp", "const auto toDoList = autodoc(); // part 3 of 4\n", 0),
    ("words", "src/A.cpp", "// TO" + "DO: see Pa" + "rt 3.1\n", 2),
    ("words", "README.md", "as requi" + "red by the Speci" + "fication in /wor" + "k/a\n", 3),
    ("words", "LICENSE", "speci" + "fication", 0),
    ("qml", "src/iOS/Mapa/A.qml", "PlainText { text: root.title }\n// Text { }\n    T.ItemDelegate { }\n", 0),
    ("qml", "src/iOS/Mapa/A.qml", "    contentItem: Text {\n    Controls.Button{ }\n", 2),
    ("qml", "src/macOS/A.qml", "    Desktop.MenuItem { }\n    component Entry: Desktop.MenuItem {\n", 0),
    ("qml", "src/iOS/Mapa/A.qml", 'color: "#fff"\nborder.color: Qt.rgba(0, 0, 0, 1)\n', 2),
    ("qml", "src/iOS/Shared/A.qml", 'Text { color: "#fff" }\n', 1),
    ("qml", "src/iOS/Shared/Theme.qml", 'color: "#fff"\n', 0),
    ("futures", "src/A.cpp", "f.then([](int i) { return g(i, 1); }).then(QtFuture::Launch::Sync, [] {});\n", 0),
    ("futures", "src/A.cpp", "f.then(this, [] {})\n    .onFailed(\n        owner.data, [] {});\n", 2),
    ("futures", "src/Platform/Support/Async.h", "f.then(owner, [] {});\n", 0),
    ("bus", "src/Platform/Location/A.cpp", "callAsync(m_bus, question, this, done);\nm_bus.send(message);\n", 0),
    ("bus", "src/Platform/Location/A.cpp", "m_bus.call(question);\nm_bus.interface()->isServiceRegistered(name);\n", 2),
    ("bus", "src/Platform/Session/FirstInstance.cpp", "m_bus.call(question);\n", 0),
]


class RulesTest(unittest.TestCase):
    def test_faults_are_found_and_nothing_else(self):
        for rule, path, text, count in CASES:
            with self.subTest(rule=rule, path=path, text=text):
                self.assertEqual(len(lint.RULES[rule](path, text)), count)


if __name__ == "__main__":
    unittest.main()
