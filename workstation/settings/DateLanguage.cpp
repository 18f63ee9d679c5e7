// SPDX-License-Identifier: Apache-2.0

#include "DateLanguage.h"

#include <array>

namespace
{
struct Entry
{
    DateLanguage language;
    const char* key;
    const char* name;
    QLocale::Language locale;
    const char* day;    // null: the locale's own short format
    const char* format; // of day and time
};

// The formats are written out because the locales' long formats carry the day of the week, which a list has
// no room for, and their short ones a year of two digits.
constexpr std::array<Entry, 4> entries{{
    {DateLanguage::System, "system", "跟随系统", QLocale::AnyLanguage, nullptr, nullptr},
    {DateLanguage::Chinese, "zh", "中文", QLocale::Chinese, "yyyy年M月d日", "yyyy年M月d日 HH:mm"},
    {DateLanguage::English, "en", "English", QLocale::English, "MMM d, yyyy", "MMM d, yyyy h:mm AP"},
    {DateLanguage::Japanese, "ja", "日本語", QLocale::Japanese, "yyyy年M月d日", "yyyy年M月d日 H:mm"},
}};

const Entry& EntryOf(DateLanguage language)
{
    for (const Entry& entry : entries)
        if (entry.language == language)
            return entry;
    return entries.front();
}

// A system that names no language says nothing about its user's; then the dates speak as the texts do. The short
// format of a Chinese one has the twelve hours that nobody writes there.
const Entry& EntryFor(DateLanguage language, const QLocale& system)
{
    const bool isOurs = system.language() == QLocale::C || system.language() == QLocale::Chinese;
    return EntryOf(language == DateLanguage::System && isOurs ? DateLanguage::Chinese : language);
}
} // namespace

QList<DateLanguage> AllDateLanguages()
{
    QList<DateLanguage> all;
    for (const Entry& entry : entries)
        all << entry.language;
    return all;
}

QString DateLanguageName(DateLanguage language)
{
    return QString::fromUtf8(EntryOf(language).name);
}

QString DateLanguageKey(DateLanguage language)
{
    return QString::fromLatin1(EntryOf(language).key);
}

DateLanguage DateLanguageFromKey(const QString& key)
{
    for (const Entry& entry : entries)
        if (key == QLatin1String(entry.key))
            return entry.language;
    return DateLanguage::System;
}

QString DateText(const QDateTime& time, DateLanguage language, const QLocale& system)
{
    if (!time.isValid())
        return {};
    const Entry& entry = EntryFor(language, system);
    const QDateTime local = time.toLocalTime();
    if (!entry.format)
        return system.toString(local, QLocale::ShortFormat);
    return QLocale(entry.locale).toString(local, QString::fromUtf8(entry.format));
}

QString DayText(const QDate& day, DateLanguage language, const QLocale& system)
{
    if (!day.isValid())
        return {};
    const Entry& entry = EntryFor(language, system);
    if (!entry.day)
        return system.toString(day, QLocale::ShortFormat);
    return QLocale(entry.locale).toString(day, QString::fromUtf8(entry.day));
}
