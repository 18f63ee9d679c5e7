// SPDX-License-Identifier: Apache-2.0

#include "TypedValue_p.h"

#include <WbFoundation/ContentLimits.h>

#include <QDate>
#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace
{
bool IsNumber(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

QDate ReadDate(const QString& text)
{
    const QDate date = QDate::fromString(text, Qt::ISODate);
    if (date.isValid())
        return date;
    // The forms that Chinese users write.
    for (const QString& format : {QStringLiteral("yyyy/M/d"), QStringLiteral("yyyy年M月d日"),
                                  QStringLiteral("yyyy-M-d"), QStringLiteral("yyyy.M.d")}) {
        const QDate other = QDate::fromString(text, format);
        if (other.isValid())
            return other;
    }
    return QDate();
}

QDateTime ReadDateTime(const QString& text)
{
    for (const QString& format :
         {QStringLiteral("yyyy-M-d H:m:s"), QStringLiteral("yyyy-M-d H:m"), QStringLiteral("yyyy/M/d H:m:s"),
          QStringLiteral("yyyy/M/d H:m"), QStringLiteral("yyyy年M月d日 H:m")}) {
        QDateTime moment = QDateTime::fromString(text, format);
        if (moment.isValid())
            return moment;
    }
    const QDateTime moment = QDateTime::fromString(text, Qt::ISODate).toLocalTime();
    const QDate day = ReadDate(text);
    return moment.isValid() || !day.isValid() ? moment : day.startOfDay();
}
} // namespace

bool TypedValue::ToNumber(QVariant& value)
{
    bool ok = true;
    double number = 0;
    if (IsNumber(value)) {
        number = value.toDouble();
    } else if (value.userType() == QMetaType::QString) {
        const QLocale locale = QLocale::c(); // takes 1,234.5 and 1234.5
        number = locale.toDouble(value.toString().trimmed(), &ok);
    } else {
        return false;
    }
    if (!ok || !std::isfinite(number))
        return false;
    value = number;
    return true;
}

bool TypedValue::ToDate(QVariant& value)
{
    QDate date;
    if (value.userType() == QMetaType::QDate || value.userType() == QMetaType::QDateTime)
        date = value.toDate();
    else if (value.userType() == QMetaType::QString)
        date = ReadDate(value.toString().trimmed());
    if (!date.isValid())
        return false;
    value = date;
    return true;
}

bool TypedValue::ToDateTime(QVariant& value)
{
    QDateTime moment;
    if (value.userType() == QMetaType::QDateTime)
        moment = value.toDateTime().toLocalTime();
    else if (value.userType() == QMetaType::QDate)
        moment = value.toDate().startOfDay();
    else if (value.userType() == QMetaType::QString)
        moment = ReadDateTime(value.toString().trimmed());
    if (!moment.isValid())
        return false;
    const QTime time = moment.time();
    value = QDateTime(moment.date(), QTime(time.hour(), time.minute(), time.second()));
    return true;
}

bool TypedValue::ToTexts(QVariant& value)
{
    constexpr int mostTexts = 10000;
    if (value.userType() == QMetaType::QString) {
        const QString text = value.toString();
        value = text.isEmpty() ? QStringList() : QStringList(text);
        return true;
    }
    if (value.userType() != QMetaType::QStringList && value.userType() != QMetaType::QVariantList)
        return false;
    const QVariantList given = value.toList();
    QStringList texts;
    for (const QVariant& entry : given) {
        if (entry.userType() != QMetaType::QString || texts.size() >= mostTexts)
            return false;
        texts << entry.toString();
    }
    if (!ContentLimits::Fits(texts.join(QLatin1Char('\n'))))
        return false;
    value = texts;
    return true;
}

bool TypedValue::ToSwitch(QVariant& value)
{
    if (value.userType() == QMetaType::Bool)
        return true;
    if (IsNumber(value)) {
        value = value.toDouble() < 0 || value.toDouble() > 0;
        return true;
    }
    static const QStringList on{QStringLiteral("true"), QStringLiteral("1"), QStringLiteral("是"),
                                QStringLiteral("yes")};
    static const QStringList off{QStringLiteral("false"), QStringLiteral("0"), QStringLiteral("否"),
                                 QStringLiteral("no")};
    const QString text = value.toString().trimmed().toLower();
    const bool isOn = on.contains(text);
    if (!isOn && !off.contains(text))
        return false;
    value = isOn;
    return true;
}

bool TypedValue::ToText(QVariant& value)
{
    if (value.userType() == QMetaType::QString)
        return true;
    if (value.userType() == QMetaType::QDate)
        value = value.toDate().toString(Qt::ISODate);
    else if (value.userType() == QMetaType::Double)
        value = QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    else if (value.canConvert<QString>())
        value = value.toString();
    else
        return false;
    return true;
}

bool TypedValue::IsSame(const QVariant& one, const QVariant& other)
{
    if (one.userType() != other.userType())
        return false;
    return one.userType() == QMetaType::Double ? std::equal_to<>()(one.toDouble(), other.toDouble())
                                               : one == other;
}

bool TypedValue::IsSame(const QVector<QVector<QVariant>>& one, const QVector<QVector<QVariant>>& other)
{
    const auto isSame = [](const auto& left, const auto& right, const auto& compare) {
        return left.constData() == right.constData() ||
               std::equal(left.begin(), left.end(), right.begin(), right.end(), compare);
    };
    const auto isSameCell = [](const QVariant& left, const QVariant& right) { return IsSame(left, right); };
    return isSame(one, other, [&](const QVector<QVariant>& left, const QVector<QVariant>& right) {
        return isSame(left, right, isSameCell);
    });
}

bool TypedValue::IsTooLong(const QVariant& value)
{
    return value.userType() == QMetaType::QString && !ContentLimits::Fits(value.toString());
}

QVariant TypedValue::ToJsonValue(const QVariant& value)
{
    if (value.userType() == QMetaType::QDateTime)
        return value.toDateTime().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
    return value.userType() == QMetaType::QDate ? QVariant(value.toDate().toString(Qt::ISODate)) : value;
}
