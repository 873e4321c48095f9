#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Each rule of lint.py, with what it lets through and what it does not."""
import unittest

import lint

SPDX = "// SPDX-License-Identifier: GPL-3.0-or-later\n"

# rule, path, text, how many faults
CASES = [
    ("includes", "src/Core/Models/A.cpp", '#include "Core/Models/Region.h"\n#include "Platform/Support/Async.h"\n', 0),
    ("includes", "src/Core/Models/A.cpp", '#include "A.moc"\n#include <QColor>\n#include <QtCore/QString>\n', 0),
    ("includes", "src/Core/Models/A.cpp", '#include "Core/Persistence/ModelContext.h"\n', 1),
    ("includes", "src/Core/Models/A.cpp", '#include "Region.h"\n', 1),
    ("includes", "src/Core/Models/A.cpp", "#include <Core/Models/Region.h>\n", 1),
    ("includes", "src/Core/DataSources/A.cpp", '#include "Core/Models/ParsedEarthquake.h"\n', 0),
    ("includes", "src/Core/DataSources/A.cpp", '#include "Core/Persistence/ModelContext.h"\n', 1),
    ("includes", "src/Core/Location/A.cpp", '#include "Core/Notifications/NotificationSettings.h"\n', 1),
    ("includes", "src/Core/Persistence/A.cpp", '#include "Core/Repositories/EarthquakeRepository.h"\n', 1),
    ("includes", "src/Core/ViewModels/A.cpp", '#include "Core/Repositories/EarthquakeRepository.h"\n', 0),
    ("includes", "src/Core/ViewModels/A.cpp", "#include <QQmlEngine>\n#include <qqmlintegration.h>\n", 2),
    ("includes", "src/Core/ViewModels/A.cpp", "#include <QtQuick/QQuickItem>\n#include <QDBusReply>\n", 2),
    ("includes", "src/Core/A.cpp", '#include "Core/Models/Region.h"\n', 1),
    ("includes", "src/Platform/Clock/A.cpp", '#include "Core/Models/Region.h"\n', 1),
    ("includes", "src/Platform/Map/A.cpp", "#include <QQuickItem>\n", 0),
    ("includes", "src/iOS/Mapa/A.cpp", '#include "Core/Models/Region.h"\n', 0),
    ("includes", "src/main.cpp", '#include "Support/World.h"\n', 1),
    ("includes", "tests/core/A.cpp", '#include "Support/World.h"\n#include "Core/Models/Region.h"\n', 0),
    ("first", "src/Core/Models/Region.cpp", SPDX + '#include "Core/Models/Region.h"\n#include <QColor>\n', 0),
    ("first", "src/Core/Models/Region.cpp", SPDX + '#include <QColor>\n#include "Core/Models/Region.h"\n', 1),
    ("first", "src/Core/Models/Region.cpp", SPDX, 1),
    ("first", "src/main.cpp", "#include <QGuiApplication>\n", 0),
    ("imports", "src/iOS/Mapa/A.qml", "import QtQuick\nimport orvalia.Shared\n", 0),
    ("imports", "src/iOS/Shared/A.qml", "import orvalia.Shell\n", 1),
    ("imports", "src/macOS/A.qml", "import orvalia.Shared\n", 0),
    ("names", "src/Core/Models/Region.cpp", "", 0),
    ("names", "src/iOS/Mapa/Region.qml", "", 2),
    ("names", "demo/main.cpp", "", 0),
    ("licence", "src/A.cpp", SPDX, 0),
    ("licence", "src/A.cpp", "#pragma once\n", 1),
    ("licence", "src/A.cpp", "\n\n\n" + SPDX, 1),
    ("licence", "run", "#!/bin/sh\n", 1),
    ("licence", "src/CMakeLists.txt", "", 1),
    ("licence", "README.md", "", 0),
    ("words", "src/A.cpp", "// TO" + "DO: later\n", 1),
    ("words", "src/A.cpp", "const auto toDoList = autodoc();\n", 0),
    ("words", "src/A.cpp", "// see Pa" + "rt 3.1\n", 1),
    ("words", "src/A.cpp", "// part 3 of 4\n", 0),
    ("words", "README.md", "as requi" + "red by the Speci" + "fication in /wor" + "k/a\n", 3),
    ("words", "LICENSE", "speci" + "fication", 0),
    ("qml", "src/iOS/Mapa/A.qml", "PlainText { text: root.title }\n// Text { }\n", 0),
    ("qml", "src/iOS/Mapa/A.qml", "    contentItem: Text {\n", 1),
    ("qml", "src/iOS/Mapa/A.qml", "    Controls.Button{ }\n", 1),
    ("qml", "src/iOS/Mapa/A.qml", "    T.ItemDelegate { }\n", 0),
    ("qml", "src/macOS/A.qml", "    Desktop.MenuItem { }\n    component Entry: Desktop.MenuItem {\n", 0),
    ("qml", "src/iOS/Mapa/A.qml", 'color: "#fff"\nborder.color: Qt.rgba(0, 0, 0, 1)\n', 2),
    ("qml", "src/iOS/Shared/A.qml", 'Text { color: "#fff" }\n', 1),
    ("qml", "src/iOS/Shared/Theme.qml", 'color: "#fff"\n', 0),
    ("futures", "src/A.cpp", "f.then([](int i) { return g(i, 1); }).onFailed([] {});\n", 0),
    ("futures", "src/A.cpp", "f.then(QtFuture::Launch::Sync, [] {});\n", 0),
    ("futures", "src/A.cpp", "f.then(this, [] {});\n", 1),
    ("futures", "src/A.cpp", "f.then([] {})\n    .onFailed(\n        owner.data, [] {});\n", 1),
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

    def test_one_screen_does_not_know_another(self):
        self.assertEqual(lint.forbidden("iOS/Mapa/A.h", "iOS/Stats/B.h"), ["iOS/Mapa must not know iOS/Stats/B.h"])
        self.assertEqual(lint.forbidden("iOS/Mapa/A.h", "iOS/Mapa/B.h"), [])
        self.assertEqual(lint.forbidden("iOS/Mapa/A.h", "iOS/Shared/Detail/B.h"), [])
        self.assertEqual(lint.forbidden("iOS/MainTabView.h", "iOS/Mapa/B.h"), [])
        self.assertNotEqual(lint.forbidden("iOS/Shared/A.h", "iOS/Mapa/B.h"), [])
        self.assertNotEqual(lint.forbidden("iOS/Mapa/A.h", "macOS/B.h"), [])


if __name__ == "__main__":
    unittest.main()
