// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownWindow.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Subject = Permissions::Subject;
using Answer = Permissions::Answer;

namespace {
const QString ofNotifications = u"¿Permitir que orvalia envíe notificaciones?"_s;
const QString ofLocation = u"¿Permitir que orvalia use tu ubicación?"_s;
}

/// The program's own questions, and the window in which their answers can be changed.
class PermissionQuestionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void questionsComeOneAfterTheOther()
    {
        ShownWindow shown;
        // No fading question may pass for one that stays.
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show());
        QVERIFY(!shown.named("Permitir"));
        const QFuture<Answer> location = shown.world.permissions.request(Subject::location);
        const QFuture<Answer> notifications = shown.world.permissions.request(Subject::notifications);
        QTRY_VERIFY(shown.named(ofNotifications));
        QVERIFY(!shown.named(ofLocation));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.click(shown.named("No permitir"));
        QCOMPARE(notifications.result(), Answer::denied);
        QTRY_VERIFY(shown.named(ofLocation));
        QVERIFY(!shown.named(ofNotifications));

        QTRY_VERIFY(shown.window().activeFocusItem() == shown.named("Permitir"));
        shown.press(Qt::Key_Escape);
        QVERIFY2(!location.isFinished(), "Escape is no answer");
        shown.press(Qt::Key_Tab);
        shown.press(Qt::Key_Tab);
        QVERIFY2(shown.window().activeFocusItem() == shown.named("Permitir"), "Escape or Tab left the question");
        shown.press(Qt::Key_Return);
        QCOMPARE(location.result(), Answer::authorized);
        QTRY_VERIFY(!shown.named("Permitir"));
    }

    void settingsWindowAsksWhereItIsOpen()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.press(Qt::Key_Comma, Qt::ControlModifier);
        QVERIFY(shown.enter("Ajustes"));
        shown.world.permissions.request(Subject::location);
        QTRY_VERIFY(shown.named(ofLocation));
        shown.press(Qt::Key_Escape);
        QVERIFY2(shown.window().isVisible(), "Escape closed the window under the question");
        QVERIFY(shown.enter("Terremotos"));
        QVERIFY(!shown.named(ofLocation));
    }

    void permissionsWindowChangesTheAnswers()
    {
        ShownWindow shown;
        shown.world.permissions.answers.insert(Subject::notifications, Answer::denied);
        QVERIFY(shown.show());
        QVERIFY(shown.open("orvalia/Ajustes/PermissionsWindow.qml", "Permisos"));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        QVERIFY(!shown.named("Ajustes de notificaciones del escritorio"));
        const auto moveUp = [&shown](const char *picker) {
            shown.click(shown.named(picker));
            shown.press(Qt::Key_Up);
            shown.press(Qt::Key_Return);
        };
        moveUp("Notificaciones: Denegado");
        QCOMPARE(shown.world.permissions.answer(Subject::notifications), Answer::authorized);
        QVERIFY(shown.named("Notificaciones: Permitido"));
        QTRY_VERIFY2(!shown.named("Denegado"), "the menu has gone");
        QCOMPARE(shown.world.permissions.answer(Subject::location), Answer::notDetermined);

        moveUp("Ubicación: Sin preguntar");
        QCOMPARE(shown.world.permissions.answer(Subject::location), Answer::denied);
        QTRY_VERIFY2(!shown.named("Sin preguntar"), "the menu has gone");
        // Once answered, it cannot be made unasked.
        shown.click(shown.named("Ubicación: Denegado"));
        QTRY_VERIFY(shown.named("Permitido"));
        QVERIFY(!shown.named("Sin preguntar"));
    }

    void desktopsOwnSettingsAreOfferedWhereTheyExist()
    {
        ShownWindow shown;
        shown.world.workspace.notificationSettings = true;
        QVERIFY(shown.show());
        QVERIFY(shown.open("orvalia/Ajustes/PermissionsWindow.qml", "Permisos"));
        shown.click(shown.named("Ajustes de notificaciones del escritorio"));
        QCOMPARE(shown.world.workspace.notificationSettingsOpened, 1);
    }
};

QTEST_MAIN(PermissionQuestionTest)
#include "PermissionQuestionTest.moc"
