// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Permissions/StoredPermissions.h"
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
    void userIsAskedOnceAndTheAnswerIsStored_data()
    {
        const Table<Answer, QByteArray> row;
        row("refused", Answer::denied, "[General]\nlocation=text:denied\n");
        row("granted", Answer::authorized, "[General]\nlocation=text:authorized\n");
    }

    void userIsAskedOnceAndTheAnswerIsStored()
    {
        const auto [given, stored] = Table<Answer, QByteArray>::current();
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("permissions.ini")));
        StoredPermissions permissions(file.fileName());
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
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), stored);
        for (const QFuture<Answer> &request : {first, second, permissions.request(Subject::location)}) {
            QVERIFY(request.isFinished());
            QCOMPARE(request.result(), given);
        }
        QCOMPARE(asked, once);
        const StoredPermissions again(file.fileName());
        QCOMPARE(again.answer(Subject::location), given);
        QCOMPARE(again.answer(Subject::notifications), Answer::notDetermined);
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
