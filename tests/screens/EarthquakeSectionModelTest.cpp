// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/EarthquakeSectionModel.h"
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <QSignalSpy>
#include <QTest>

#include <random>

namespace {
using Section = EarthquakeSectionModel::Section;

/// A model, and a record of what it tells.
struct Fixture
{
    World world;
    EarthquakeSectionModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::QtTest};
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
    QSignalSpy layoutChanges{&model, &QAbstractItemModel::layoutChanged};
    QStringList told;

    Fixture()
    {
        const auto tell = [this](const char *what) {
            return [this, what](const QModelIndex &, int first, int last) {
                told.append(QStringLiteral("%1 %2-%3").arg(QLatin1String(what)).arg(first).arg(last));
            };
        };
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, tell("inserted"));
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, tell("removed"));
        QObject::connect(&model, &QAbstractItemModel::dataChanged,
                         [this](const QModelIndex &first, const QModelIndex &last) {
                             told.append(QStringLiteral("changed %1-%2").arg(first.row()).arg(last.row()));
                         });
    }

    /// Shows these of `events`, in one section.
    void show(const std::vector<Earthquake> &events, const std::vector<quint32> &places)
    {
        show(events, places, {{QStringLiteral("a"), qsizetype(places.size())}});
    }
    void show(const std::vector<Earthquake> &events, const std::vector<quint32> &places,
              const std::vector<Section> &sections)
    {
        told.clear();
        model.show(events, places, sections);
    }
    QString shown() const
    {
        QStringList ids;
        for (int row = 0; row < model.rowCount(); ++row)
            ids.append(model.at(row).eventID());
        return ids.join(u' ');
    }
    QVariant value(int row, int role) const { return model.data(model.index(row), role); }
};

/// Five events, newest first; c and d have the same date.
std::vector<Earthquake> fiveEvents()
{
    return {testEarthquake(QStringLiteral("a"), 500), testEarthquake(QStringLiteral("b"), 400),
            testEarthquake(QStringLiteral("c"), 300), testEarthquake(QStringLiteral("d"), 300),
            testEarthquake(QStringLiteral("e"), 200)};
}
}

class EarthquakeSectionModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsOnlyWhatChanged_data()
    {
        Table<QList<quint32>, QList<quint32>, QString, QString> row;
        row("the same again", {0, 1, 2}, {0, 1, 2}, "a b c", "");
        row("new on top", {2, 4}, {0, 1, 2, 4}, "a b c e", "inserted 0-1");
        row("new in the middle", {0, 4}, {0, 1, 2, 4}, "a b c e", "inserted 1-2");
        row("one of the same date", {0, 3, 4}, {0, 2, 3, 4}, "a c d e", "inserted 1-1");
        row("the other of the same date", {0, 2, 4}, {0, 2, 3, 4}, "a c d e", "inserted 2-2");
        row("one for another of the same date", {2}, {3}, "d", "removed 0-0,inserted 0-0");
        row("oldest gone", {0, 1, 4}, {0, 1}, "a b", "removed 2-2");
        row("here and there", {0, 2, 4}, {1, 2, 3}, "b c d", "removed 2-2,removed 0-0,inserted 0-0,inserted 2-2");
        row("first rows", {}, {0, 1}, "a b", "inserted 0-1");
        row("nothing left", {0, 1}, {}, "", "removed 0-1");
    }

    void tellsOnlyWhatChanged()
    {
        const auto [before, after, shown, told] = Table<QList<quint32>, QList<quint32>, QString, QString>::current();
        Fixture f;
        const std::vector<Earthquake> events = fiveEvents();
        f.show(events, {before.begin(), before.end()});
        f.show(events, {after.begin(), after.end()});
        QCOMPARE(f.shown(), shown);
        QCOMPARE(f.told.join(u','), told);
        QCOMPARE(f.resets.count() + f.layoutChanges.count(), 0);
    }

    void rowsThatChangeTheirSectionStay()
    {
        Fixture f;
        const std::vector<Earthquake> events = fiveEvents();
        f.show(events, {0, 1, 2, 3}, {{QStringLiteral("24h"), 3}, {QStringLiteral("7d"), 1}});
        QCOMPARE(f.value(2, EarthquakeSectionModel::sectionRole).toString(), QStringLiteral("24h"));
        f.show(events, {0, 1, 2, 3}, {{QStringLiteral("24h"), 1}, {QStringLiteral("7d"), 3}});
        QCOMPARE(f.told.join(u','), QStringLiteral("changed 1-2"));
        QCOMPARE(f.value(2, EarthquakeSectionModel::sectionRole).toString(), QStringLiteral("7d"));
        QCOMPARE(f.value(0, EarthquakeSectionModel::sectionRole).toString(), QStringLiteral("24h"));
    }

    void insertedRowsAreInTheirSectionAtOnce()
    {
        Fixture f;
        QStringList sections;
        QObject::connect(&f.model, &QAbstractItemModel::rowsInserted, [&](const QModelIndex &, int first, int last) {
            for (int row = first; row <= last; ++row)
                sections.append(f.value(row, EarthquakeSectionModel::sectionRole).toString());
        });
        f.show(fiveEvents(), {0, 1},
               {{QStringLiteral("24h"), 1}, {QStringLiteral("7d"), 0}, {QStringLiteral("30d"), 1}});
        QCOMPARE(sections.join(u','), QStringLiteral("24h,30d"));
    }

    void viewsKeepTheirPlaceWhateverComesAndGoes()
    {
        Fixture f;
        std::mt19937 random(11);
        std::vector<Earthquake> events;
        events.reserve(400);
        for (int i = 0; i < 400; ++i)
            events.push_back(testEarthquake(QString::number(i), 1000 - i / 3));
        for (int round = 0; round < 60; ++round) {
            std::vector<quint32> places;
            const unsigned odds = 1 + random() % 8;
            for (quint32 place = 0; place < events.size(); ++place)
                if (place == 200 || random() % 8 < odds)
                    places.push_back(place);
            f.show(events, places);
            QStringList expected;
            for (const quint32 place : places)
                expected.append(events[place].eventID());
            QCOMPARE(f.shown(), expected.join(u' '));
            QCOMPARE(f.model.rowOf(events[200].id()), std::ranges::find(places, 200u) - places.begin());
        }
        QCOMPARE(f.resets.count() + f.layoutChanges.count(), 0);
    }

    void chosenRowGoesWithItsEvent_data()
    {
        Table<QList<quint32>, int> row;
        row("rows above go", QList<quint32>{2, 3, 4}, 1);
        row("rows above come", QList<quint32>{0, 1, 2, 3, 4}, 3);
        row("itself goes: the one in its place", QList<quint32>{0, 1, 2, 4}, 2);
        row("itself goes, and all behind it", QList<quint32>{0, 1}, 1);
        row("all go", QList<quint32>{}, -1);
    }

    void chosenRowGoesWithItsEvent()
    {
        const auto [after, row] = Table<QList<quint32>, int>::current();
        Fixture f;
        const std::vector<Earthquake> events = fiveEvents();
        f.show(events, {1, 2, 3, 4});
        f.model.setCurrentRow(2);
        f.show(events, {after.begin(), after.end()});
        QCOMPARE(f.model.currentRow(), row);
    }

    void onlyARowThatThereIsCanBeChosen()
    {
        Fixture f;
        f.show(fiveEvents(), {0, 1, 2, 3});
        f.model.setCurrentRow(4);
        QCOMPARE(f.model.currentRow(), 3);
        f.model.setCurrentRow(-2);
        QCOMPARE(f.model.currentRow(), -1);
    }

    void eventWithNewValuesIsShownAnew()
    {
        Fixture f;
        ModelContainer container({.isStoredInMemoryOnly = true});
        const auto save = [&](const Earthquake &event) {
            container.mainContext().insert(event);
            container.mainContext().save();
        };
        save(testEarthquake(QStringLiteral("a"), 500));
        save(testEarthquake(QStringLiteral("b"), 400));
        const auto showAll = [&] {
            const std::span<const Earthquake> all = container.earthquakes().earthquakes();
            f.show({all.begin(), all.end()}, {0, 1});
        };
        showAll();
        save(testEarthquake(QStringLiteral("b"), 400, 3.5));
        showAll();
        QCOMPARE(f.told.join(u','), QStringLiteral("changed 1-1"));
        QCOMPARE(f.value(1, EarthquakeSectionModel::magnitudeRole).toDouble(), 3.5);
    }

    void rowInWords()
    {
        Fixture f;
        // 14 characters on one line, and endless more.
        const QString location = QStringLiteral("W\n\u202E<b>ADEJE</b>") + QString(4000, u'x');
        const Earthquake event(QStringLiteral("x"), Instant(std::chrono::seconds(1738379005)), 28, -16, 9.5, 2.25,
                               QStringLiteral("mbLg"), std::nullopt, location);
        f.show({event}, {0});
        QCOMPARE(f.value(0, EarthquakeSectionModel::locationRole).toString(), location);
        QCOMPARE(f.value(0, EarthquakeSectionModel::depthTextRole).toString(), QStringLiteral("10 km"));
        QCOMPARE(f.value(0, EarthquakeSectionModel::dateTextRole).toString(), QStringLiteral("02/1/25, 03:03"));
        QCOMPARE(f.value(0, EarthquakeSectionModel::sentenceRole).toString(),
                 QStringLiteral("Magnitud 2.2, W <b>ADEJE</b>") + QString(186, u'x')
                     + QStringLiteral(", 02/1/25, 03:03, profundidad 10 km"));
    }
};

QTEST_GUILESS_MAIN(EarthquakeSectionModelTest)
#include "EarthquakeSectionModelTest.moc"
