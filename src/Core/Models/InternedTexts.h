// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QString>

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Each distinct text once, by number: a few thousand place names serve a million events. Only ever grows; lives as
/// long as the process, because records of every store share it. Main thread only.
class InternedTexts
{
public:
    /// Where events happened.
    static InternedTexts &placeNames();
    /// Magnitude types and intensities.
    static InternedTexts &labels();

    /// The number of a text in UTF-8, given to it now if it is new. Counted from 0 without gaps.
    quint32 indexOf(std::string_view utf8);

    /// `index` must come from indexOf().
    const QString &text(quint32 index) const { return m_texts[index]; }
    quint32 count() const { return quint32(m_texts.size()); }

private:
    struct Hash : std::hash<std::string_view>
    {
        using is_transparent = void;
    };

    std::unordered_map<std::string, quint32, Hash, std::equal_to<>> m_indexes;
    std::vector<QString> m_texts;
};
