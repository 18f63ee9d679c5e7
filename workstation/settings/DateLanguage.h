// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QString>

// Language in which dates are written, independent of the language of the texts around them.
enum class DateLanguage
{
    System,
    Chinese,
    English,
    Japanese,
};

QList<DateLanguage> AllDateLanguages();

// Name of the language as the user reads it in the settings.
QString DateLanguageName(DateLanguage language);

// Stable key for the settings file, and back; an unknown key gives System.
QString DateLanguageKey(DateLanguage language);
DateLanguage DateLanguageFromKey(const QString& key);

// Date and time of day in local time; empty for an invalid time.
QString DateText(const QDateTime& time, DateLanguage language, const QLocale& system = QLocale::system());

// A day as it is, whatever the time zone; empty for an invalid one.
QString DayText(const QDate& day, DateLanguage language, const QLocale& system = QLocale::system());
