// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Session/FirstInstance.h"
#include "Support/PrivateBus.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {
const QString id = u"org.example.program"_s;
}

class FirstInstanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void laterOneHandsOverToTheFirst()
    {
        auto first = std::make_unique<FirstInstance>(m_bus.connection(u"first"_s), id);
        QVERIFY(!first->handsOver());
        const QSignalSpy startedAgain(first.get(), &FirstInstance::startedAgain);
        QVERIFY(startAgain());
        QCOMPARE(startedAgain.count(), 1);
        QVERIFY(startAgain());
        QCOMPARE(startedAgain.count(), 2);
        first.reset();
        const FirstInstance next(m_bus.connection(u"next"_s), id);
        QVERIFY2(!next.handsOver(), "the name of one that ended is not free");
        QVERIFY(startAgain());
        const QDBusConnection none(u"no such bus"_s);
        const FirstInstance alone(none, id);
        QVERIFY(!alone.handsOver() && !FirstInstance(none, id).handsOver());
    }

    void leaveToComeToTheFrontIsHandedToTheWindowSystem()
    {
        FirstInstance first(m_bus.connection(u"first"_s), id);
        first.Activate({});
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
        first.Activate({{u"activation-token"_s, u"leave"_s}});
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("leave"));
    }

    void holderThatDoesNotAnswerCountsAsNone()
    {
        QVERIFY(m_bus.connection(u"stranger"_s).registerService(id));
        QVERIFY(!startAgain());
    }

private:
    /// Whether another process would hand over, while this thread goes on.
    bool startAgain()
    {
        const QDBusConnection connection = m_bus.connection(u"again"_s);
        bool handsOver = false;
        const std::unique_ptr<QThread> process(
            QThread::create([&connection, &handsOver] { handsOver = FirstInstance(connection, id).handsOver(); }));
        process->start();
        [&process] { QTRY_VERIFY(process->isFinished()); }();
        process->wait();
        return handsOver;
    }

    PrivateBus m_bus;
};

QTEST_GUILESS_MAIN(FirstInstanceTest)
#include "FirstInstanceTest.moc"
