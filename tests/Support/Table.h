// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QDebug>
#include <QString>
#include <QTest>

#include <tuple>
#include <type_traits>
#include <utility>

/// The rows of a data-driven test. Its data function fills a `Table<int, QString> row` by calls such as
/// row("name", 1, "text"); the test itself reads `const auto [count, text] = Table<int, QString>::current()`.
template<class... Columns>
class Table
{
    /// A text that may be given as a literal, which QString itself does not take.
    struct Text : QString
    {
        Text() = default;
        Text(const char *utf8)
            : QString(QString::fromUtf8(utf8))
        {
        }
        Text(const QString &text)
            : QString(text)
        {
        }
    };

    template<class Column>
    using Cell = std::conditional_t<std::is_same_v<Column, QString>, Text, Column>;

public:
    Table() { addColumns(std::index_sequence_for<Columns...>()); }

    void operator()(const QByteArray &name, const Cell<Columns> &...cells) const
    {
        QTestData &row = QTest::newRow(name.constData());
        (void(row << static_cast<const Columns &>(cells)), ...);
    }

    /// A row that is named by what it holds.
    void unnamed(const Cell<Columns> &...cells) const
    {
        QString name;
        (void(QDebug(&name).noquote() << static_cast<const Columns &>(cells)), ...);
        (*this)(name.trimmed().toUtf8(), cells...);
    }

    /// The row that the running test function is called for.
    static std::tuple<Columns...> current() { return columns(std::index_sequence_for<Columns...>()); }

private:
    static constexpr const char *names[] = {"1", "2", "3", "4", "5", "6"};

    template<size_t... Index>
    static void addColumns(std::index_sequence<Index...>)
    {
        (QTest::addColumn<Columns>(names[Index]), ...);
    }

    template<size_t... Index>
    static std::tuple<Columns...> columns(std::index_sequence<Index...>)
    {
        return {*static_cast<const Columns *>(QTest::qData(names[Index], qMetaTypeId<Columns>()))...};
    }
};
