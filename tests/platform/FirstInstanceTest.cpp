// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Session/FirstInstance.h"
#include "Support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

namespace {
const QString id = QStringLiteral("org.example.program");
}

/// On a bus of the test's own.
class FirstInstanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { qunsetenv("XDG_ACTIVATION_TOKEN"); }

    void laterOneHandsOverToTheFirst()
    {
        PrivateBus bus;
        const FirstInstance first(bus.connection(QStringLiteral("first")), id);
        QVERIFY(!first.handsOver());
        const QSignalSpy startedAgain(&first, &FirstInstance::startedAgain);
        qputenv("XDG_ACTIVATION_TOKEN", "leave");
        QVERIFY(startAgain(bus));
        QCOMPARE(startedAgain.count(), 1);
        QVERIFY(startAgain(bus));
        QCOMPARE(startedAgain.count(), 2);
    }

    void leaveToComeToTheFrontTravelsAlong()
    {
        PrivateBus bus;
        FirstInstance first(bus.connection(QStringLiteral("first")), id);
        first.Activate({});
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
        QDBusMessage call =
            QDBusMessage::createMethodCall(id, QStringLiteral("/org/example/program"),
                                           QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
        call << QVariantMap{{QStringLiteral("activation-token"), QStringLiteral("leave")}};
        bus.connection(QStringLiteral("desktop")).asyncCall(call);
        QTRY_COMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("leave"));
    }

    void nameOfOneThatEndedIsFree()
    {
        PrivateBus bus;
        std::make_unique<FirstInstance>(bus.connection(QStringLiteral("first")), id).reset();
        const FirstInstance next(bus.connection(QStringLiteral("next")), id);
        const QSignalSpy startedAgain(&next, &FirstInstance::startedAgain);
        QVERIFY(startAgain(bus));
        QCOMPARE(startedAgain.count(), 1);
    }

    void holderThatDoesNotAnswerCountsAsNone()
    {
        PrivateBus bus;
        QVERIFY(bus.connection(QStringLiteral("stranger")).registerService(id));
        QVERIFY(!startAgain(bus));
    }

    void withoutABusEveryoneIsTheFirst()
    {
        const QDBusConnection none(QStringLiteral("no such bus"));
        const FirstInstance first(none, id);
        const FirstInstance second(none, id);
        QVERIFY(!first.handsOver());
        QVERIFY(!second.handsOver());
    }

private:
    /// Whether another process would hand over, while this thread goes on.
    static bool startAgain(PrivateBus &bus)
    {
        const QDBusConnection connection = bus.connection(QStringLiteral("again"));
        bool handsOver = false;
        const std::unique_ptr<QThread> process(
            QThread::create([&connection, &handsOver] { handsOver = FirstInstance(connection, id).handsOver(); }));
        process->start();
        [&process] { QTRY_VERIFY(process->isFinished()); }();
        process->wait();
        return handsOver;
    }
};

QTEST_GUILESS_MAIN(FirstInstanceTest)
#include "FirstInstanceTest.moc"
