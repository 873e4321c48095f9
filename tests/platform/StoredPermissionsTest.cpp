// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Permissions/StoredPermissions.h"
#include "Support/FakePlatform.h"
#include "Support/Table.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using Subject = Permissions::Subject;
using Answer = Permissions::Answer;

class StoredPermissionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// What the program relies on, of the fake and of the stored answers alike.
    void contract_data()
    {
        const Table<bool, Answer> row;
        row("fake", true, Answer::denied);
        row("stored", false, Answer::denied);
        row("stored, granted", false, Answer::authorized);
    }

    void contract()
    {
        const auto [isFake, given] = Table<bool, Answer>::current();
        QTemporaryDir folder;
        FakePermissions fake;
        StoredPermissions stored(folder.filePath(QStringLiteral("new folder/permissions.ini")));
        Permissions &permissions = isFake ? static_cast<Permissions &>(fake) : stored;
        QSignalSpy asked(&permissions, &Permissions::questionPending);
        QSignalSpy changed(&permissions, &Permissions::answerChanged);
        QCOMPARE(permissions.answer(Subject::location), Answer::notDetermined);

        const QFuture<Answer> first = permissions.request(Subject::location);
        const QFuture<Answer> second = permissions.request(Subject::location);
        QCOMPARE(asked, (QList<QVariantList>{{QVariant::fromValue(Subject::location)}}));
        QVERIFY(!first.isFinished() && !second.isFinished());
        QVERIFY(permissions.isPending(Subject::location) && !permissions.isPending(Subject::notifications));

        connect(&permissions, &Permissions::answerChanged, &permissions,
                [&permissions, given = given](Subject subject) {
                    QVERIFY2(permissions.answer(subject) == given && !permissions.isPending(subject), "told too early");
                });
        permissions.setAnswer(Subject::location, given);
        QVERIFY(first.isFinished() && second.isFinished());
        QCOMPARE(first.result(), given);
        QCOMPARE(second.result(), given);
        QVERIFY(!permissions.isPending(Subject::location));
        QCOMPARE(changed, (QList<QVariantList>{{QVariant::fromValue(Subject::location)}}));
        QCOMPARE(permissions.answer(Subject::location), given);
        QCOMPARE(permissions.answer(Subject::notifications), Answer::notDetermined);

        const QFuture<Answer> later = permissions.request(Subject::location);
        QVERIFY2(later.isFinished() && asked.count() == 1, "asked again");
        QCOMPARE(later.result(), given);
    }

    void answerIsInTheFileWhenTheCallReturns()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("permissions.ini")));
        StoredPermissions writer(file.fileName());
        writer.setAnswer(Subject::notifications, Answer::authorized);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), "[General]\nnotifications=text:authorized\n");
        QCOMPARE(StoredPermissions(file.fileName()).answer(Subject::notifications), Answer::authorized);
    }

    void anotherWordIsNotDetermined()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("permissions.ini")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("[General]\nlocation=text:always\n") > 0);
        file.close();
        QCOMPARE(StoredPermissions(file.fileName()).answer(Subject::location), Answer::notDetermined);
    }
};

QTEST_GUILESS_MAIN(StoredPermissionsTest)
#include "StoredPermissionsTest.moc"
