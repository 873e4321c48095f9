// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Models/InternedTexts.h"

InternedTexts &InternedTexts::placeNames()
{
    static InternedTexts texts;
    return texts;
}

InternedTexts &InternedTexts::labels()
{
    static InternedTexts texts;
    return texts;
}

quint32 InternedTexts::indexOf(std::string_view utf8)
{
    if (const auto found = m_indexes.find(utf8); found != m_indexes.end())
        return found->second;
    const quint32 index = count();
    m_texts.push_back(QString::fromUtf8(utf8.data(), qsizetype(utf8.size())));
    m_indexes.emplace(utf8, index);
    return index;
}
