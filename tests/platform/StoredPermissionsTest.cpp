// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Permissions/StoredPermissions.h"
#include "Support/FakePlatform.h"
#include "Support/Table.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using Subject = Permissions::Subject;
using Answer = Permissions::Answer;

class StoredPermissionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void userIsAskedOnceAndTheAnswerIsRemembered_data()
    {
        const Table<bool, Answer, QByteArray> row;
        row("fake, refused", true, Answer::denied, "");
        row("fake, granted", true, Answer::authorized, "");
        row("real, refused", false, Answer::denied, "[General]\nlocation=text:denied\n");
        row("real, granted", false, Answer::authorized, "[General]\nlocation=text:authorized\n");
    }

    void userIsAskedOnceAndTheAnswerIsRemembered()
    {
        const auto [isFake, given, stored] = Table<bool, Answer, QByteArray>::current();
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("permissions.ini")));
        FakePermissions fake;
        StoredPermissions real(file.fileName());
        Permissions &permissions = isFake ? static_cast<Permissions &>(fake) : real;
        QCOMPARE(permissions.answer(Subject::location), Answer::notDetermined);
        QSignalSpy asked(&permissions, &Permissions::questionPending);
        QSignalSpy changed(&permissions, &Permissions::answerChanged);
        const QList<QVariantList> once{{QVariant::fromValue(Subject::location)}};
        const QFuture<Answer> first = permissions.request(Subject::location);
        const QFuture<Answer> second = permissions.request(Subject::location);
        QCOMPARE(asked, once);
        QVERIFY(!first.isFinished() && !second.isFinished());
        QVERIFY(permissions.isPending(Subject::location) && !permissions.isPending(Subject::notifications));

        connect(&permissions, &Permissions::answerChanged, &permissions,
                [&permissions, given = given](Subject subject) {
                    QVERIFY2(permissions.answer(subject) == given && !permissions.isPending(subject), "told too early");
                });
        permissions.setAnswer(Subject::location, given);
        QCOMPARE(changed, once);
        QCOMPARE(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray(), stored);
        for (const QFuture<Answer> &request : {first, second, permissions.request(Subject::location)}) {
            QVERIFY(request.isFinished());
            QCOMPARE(request.result(), given);
        }
        QCOMPARE(asked, once);
        const StoredPermissions again(file.fileName());
        for (const Permissions *each :
             {static_cast<const Permissions *>(&permissions), isFake ? &permissions : &again}) {
            QCOMPARE(each->answer(Subject::location), given);
            QCOMPARE(each->answer(Subject::notifications), Answer::notDetermined);
        }
    }

    void anotherWordIsNotDetermined()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("permissions.ini")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("[General]\nlocation=text:always\n") > 0);
        file.close();
        QCOMPARE(StoredPermissions(file.fileName()).answer(Subject::location), Answer::notDetermined);
    }
};

QTEST_GUILESS_MAIN(StoredPermissionsTest)
#include "StoredPermissionsTest.moc"
