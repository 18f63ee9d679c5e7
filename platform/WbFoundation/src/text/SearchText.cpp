// SPDX-License-Identifier: Apache-2.0

#include "PinyinTable_p.h"

#include <WbFoundation/SearchText.h>

#include <algorithm>

namespace
{
// A bit per place of the word that has been reached.
using Places = quint64;
constexpr int mostLetters = 63;

// "zh", "ch" and "sh" are initials as well as "z", "c" and "s".
int InitialLength(const QString& syllable)
{
    return syllable.size() > 1 && syllable.at(1) == QLatin1Char('h') ? 2 : 1;
}

// Which places of the word are reached when the syllable is read from that place on.
Places ReadSyllable(const QString& syllable, const QString& word, int place)
{
    const int left = word.size() - place;
    int same = 0;
    while (same < qMin(left, syllable.size()) && syllable.at(same) == word.at(place + same))
        ++same;
    Places reached = 0;
    if (same >= 1)
        reached |= Places(1) << (place + 1);
    if (same >= InitialLength(syllable))
        reached |= Places(1) << (place + InitialLength(syllable));
    // The last syllable may be unfinished.
    if (same == syllable.size() || same == left)
        reached |= Places(1) << (place + same);
    return reached;
}

Places ReadCharacter(QChar c, const QString& word, Places from)
{
    const QStringList syllables = PinyinTable::Instance().SyllablesOf(c);
    Places reached = c.isLetterOrNumber() ? 0 : from; // nobody types the signs between the words
    for (int place = 0; place < word.size(); ++place) {
        if (!(from >> place & 1))
            continue;
        if (c.toLower() == word.at(place))
            reached |= Places(1) << (place + 1);
        for (const QString& syllable : syllables)
            reached |= ReadSyllable(syllable, word, place);
    }
    return reached;
}

bool IsReadAt(const QString& text, int start, const QString& word)
{
    const Places end = Places(1) << word.size();
    Places reached = 1;
    for (int at = start; at < text.size() && reached; ++at) {
        if (at == start && !text.at(at).isLetterOrNumber())
            return false;
        reached = ReadCharacter(text.at(at), word, reached);
        if (reached & end)
            return true;
    }
    return false;
}
} // namespace

int SearchText::Find(const QString& text, const QString& word)
{
    const int asItStands = text.indexOf(word, 0, Qt::CaseInsensitive);
    if (asItStands >= 0 || word.size() > mostLetters)
        return asItStands;
    const QString letters = word.toLower();
    for (int start = 0; start < text.size(); ++start)
        if (IsReadAt(text, start, letters))
            return start;
    return -1;
}

bool SearchText::HasAll(const QStringList& texts, const QString& words)
{
    const QStringList wanted = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return std::all_of(wanted.begin(), wanted.end(), [&texts](const QString& word) {
        return std::any_of(texts.begin(), texts.end(),
                           [&word](const QString& text) { return Find(text, word) >= 0; });
    });
}
