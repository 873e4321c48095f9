// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/NotificationSettings.h"
#include "Support/ShownWindow.h"
#include "Support/Table.h"

#include <QTest>

using Subject = Permissions::Subject;
using Answer = Permissions::Answer;

namespace {
const QString ofNotifications = QStringLiteral("¿Permitir que orvalia envíe notificaciones?");
const QString ofLocation = QStringLiteral("¿Permitir que orvalia use tu ubicación?");
}

/// The program's own questions, and the window in which their answers can be changed.
class PermissionQuestionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void buttonIsTheAnswer_data()
    {
        Table<Subject, QString, QString, Answer> row;
        const QString yes = QStringLiteral("Permitir");
        const QString no = QStringLiteral("No permitir");
        row("notifications, yes", Subject::notifications, ofNotifications, yes, Answer::authorized);
        row("location, no", Subject::location, ofLocation, no, Answer::denied);
    }

    void buttonIsTheAnswer()
    {
        const auto [subject, question, button, answer] = Table<Subject, QString, QString, Answer>::current();
        ShownWindow shown;
        QVERIFY(shown.show());
        QVERIFY(!shown.named(question));
        const QFuture<Answer> asked = shown.world.permissions.request(subject);
        QTRY_VERIFY(shown.named(question));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.click(shown.named(button));
        QCOMPARE(asked.result(), answer);
        QTRY_VERIFY(!shown.named(question));
    }

    void agreeingButtonHasTheFocus()
    {
        ShownWindow shown;
        // No fading question may pass for one that stays.
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show());
        const QFuture<Answer> asked = shown.world.permissions.request(Subject::location);
        QTRY_VERIFY(shown.window().activeFocusItem() == shown.named("Permitir"));
        shown.press(Qt::Key_Escape);
        QVERIFY2(!asked.isFinished(), "Escape is no answer");
        shown.press(Qt::Key_Tab);
        shown.press(Qt::Key_Tab);
        QVERIFY2(shown.window().activeFocusItem() == shown.named("Permitir"), "Escape or Tab left the question");
        shown.press(Qt::Key_Return);
        QCOMPARE(asked.result(), Answer::authorized);
    }

    void questionsComeOneAfterTheOther()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.world.permissions.request(Subject::location);
        shown.world.permissions.request(Subject::notifications);
        QTRY_VERIFY(shown.named(ofNotifications));
        QVERIFY(!shown.named(ofLocation));
        shown.click(shown.named("No permitir"));
        QTRY_VERIFY(shown.named(ofLocation));
        QVERIFY(!shown.named(ofNotifications));
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

    void firstStartAsks()
    {
        ShownWindow shown;
        shown.world.userNotificationCenter.answer = true;
        QVERIFY(shown.show());
        QCOMPARE(shown.world.userNotificationCenter.authorizationRequests, 1);
        QVERIFY(NotificationSettings::shared().isEnabled());
    }

    void permissionsWindowChangesTheAnswers()
    {
        ShownWindow shown;
        shown.world.permissions.answers.insert(Subject::notifications, Answer::denied);
        QVERIFY(shown.show());
        QVERIFY(shown.open("orvalia/Ajustes/PermissionsWindow.qml", "Permisos"));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        QVERIFY(!shown.named("Ajustes de notificaciones del escritorio"));
        shown.click(shown.named("Notificaciones: Denegado"));
        shown.press(Qt::Key_Up);
        shown.press(Qt::Key_Return);
        QCOMPARE(shown.world.permissions.answer(Subject::notifications), Answer::authorized);
        QVERIFY(shown.named("Notificaciones: Permitido"));
        QTRY_VERIFY2(!shown.named("Denegado"), "the menu has gone");
        QCOMPARE(shown.world.permissions.answer(Subject::location), Answer::notDetermined);

        shown.click(shown.named("Ubicación: Sin preguntar"));
        shown.press(Qt::Key_Up);
        shown.press(Qt::Key_Return);
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
