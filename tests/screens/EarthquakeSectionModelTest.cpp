// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/EarthquakeSectionModel.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QAbstractItemModelTester>
#include <QTest>

#include <random>

using namespace Qt::StringLiterals;

namespace {
using Places = std::vector<quint32>;

/// A model, what it is to show, and a record of what it tells.
struct Fixture
{
    World world;
    EarthquakeSectionModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::QtTest};
    /// Newest first; c and d have the same date.
    std::vector<Earthquake> events{testEarthquake(u"a"_s, 500), testEarthquake(u"b"_s, 400),
                                   testEarthquake(u"c"_s, 300), testEarthquake(u"d"_s, 300),
                                   testEarthquake(u"e"_s, 200)};
    QStringList told;

    Fixture()
    {
        const auto tell = [this](const QString &what) {
            return [this, what](const QModelIndex &, int first, int last) { told.append(what.arg(first).arg(last)); };
        };
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, tell(u"inserted %1-%2"_s));
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, tell(u"removed %1-%2"_s));
        QObject::connect(&model, &QAbstractItemModel::dataChanged, [this](const QModelIndex &a, const QModelIndex &b) {
            told.append(u"changed %1-%2"_s.arg(a.row()).arg(b.row()));
        });
        QObject::connect(&model, &QAbstractItemModel::modelReset, [this] { told.append(u"reset"_s); });
    }

    /// Shows these of the events, in one section.
    void show(const Places &places) { show(places, {{u"a"_s, qsizetype(places.size())}}); }
    void show(const Places &places, const std::vector<EarthquakeSectionModel::Section> &sections)
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
    QString text(int row, int role) const { return model.data(model.index(row), role).toString(); }
};
}

class EarthquakeSectionModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsOnlyWhatChanged_data()
    {
        Table<Places, Places, QString, QString> row;
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
        const auto [before, after, shown, told] = Table<Places, Places, QString, QString>::current();
        Fixture f;
        f.show(before);
        f.show(after);
        QCOMPARE(f.shown(), shown);
        QCOMPARE(f.told.join(u','), told);
    }

    /// A row is in its section as soon as it is told of, and stays when only its section changes.
    void rowsKnowTheirSection()
    {
        Fixture f;
        const auto sections = [&f] {
            QStringList ids;
            for (int row = 0; row < f.model.rowCount(); ++row)
                ids.append(f.text(row, EarthquakeSectionModel::sectionRole));
            return ids.join(u' ');
        };
        QString atOnce;
        connect(&f.model, &QAbstractItemModel::rowsInserted, this, [&] { atOnce = sections(); });
        f.show({0, 1, 2}, {{u"24h"_s, 2}, {u"7d"_s, 0}, {u"30d"_s, 1}});
        QCOMPARE(atOnce, u"24h 24h 30d"_s);
        f.show({0, 1, 2}, {{u"24h"_s, 1}, {u"7d"_s, 2}});
        QCOMPARE(sections(), u"24h 7d 7d"_s);
        QCOMPARE(f.told.join(u','), u"changed 1-2"_s);
    }

    void viewsKeepTheirPlaceWhateverComesAndGoes()
    {
        Fixture f;
        std::mt19937 random(11);
        f.events.clear();
        for (int i = 0; i < 400; ++i)
            f.events.push_back(testEarthquake(QString::number(i), 1000 - i / 3));
        for (int round = 0; round < 60; ++round) {
            Places places;
            QStringList expected;
            const unsigned odds = 1 + random() % 8;
            for (quint32 place = 0; place < f.events.size(); ++place)
                if (place == 200 || random() % 8 < odds) {
                    places.push_back(place);
                    expected.append(f.events[place].eventID());
                }
            f.show(places);
            QCOMPARE(f.shown(), expected.join(u' '));
            QCOMPARE(f.model.rowOf(f.events[200].id()), expected.indexOf(u"200"_s));
            QVERIFY(!f.told.contains(u"reset"_s));
        }
    }

    void chosenRowGoesWithItsEvent_data()
    {
        Table<Places, int> row;
        row("rows above go", Places{2, 3, 4}, 1);
        row("rows above come", Places{0, 1, 2, 3, 4}, 3);
        row("itself goes: the one in its place", Places{0, 1, 2, 4}, 2);
        row("itself goes, and all behind it", Places{0, 1}, 1);
        row("all go", Places{}, -1);
    }

    void chosenRowGoesWithItsEvent()
    {
        const auto [after, row] = Table<Places, int>::current();
        Fixture f;
        f.show({1, 2, 3, 4});
        f.model.setCurrentRow(2);
        f.show(after);
        QCOMPARE(f.model.currentRow(), row);
    }

    void rowInWords()
    {
        Fixture f;
        // 14 characters on one line, and endless more.
        const QString location = u"W\n\u202E<b>ADEJE</b>"_s + QString(4000, u'x');
        f.events = {Earthquake(u"x"_s, Instant(std::chrono::seconds(1738379005)), 28, -16, 9.5, 2.25, u"mbLg"_s,
                               std::nullopt, location)};
        f.show({0});
        QCOMPARE(f.text(0, EarthquakeSectionModel::locationRole), location);
        QCOMPARE(f.text(0, EarthquakeSectionModel::depthTextRole), u"10 km"_s);
        QCOMPARE(f.text(0, EarthquakeSectionModel::dateTextRole), u"02/1/25, 03:03"_s);
        QCOMPARE(f.text(0, EarthquakeSectionModel::sentenceRole),
                 u"Magnitud 2.2, W <b>ADEJE</b>"_s + QString(186, u'x') + u", 02/1/25, 03:03, profundidad 10 km"_s);
    }
};

QTEST_GUILESS_MAIN(EarthquakeSectionModelTest)
#include "EarthquakeSectionModelTest.moc"
