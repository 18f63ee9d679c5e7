// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

#include <QDate>
#include <QVector>

#include <limits>

// How often the accounts of the vendor did something on a day.
struct VersionServiceUsageCount
{
    static constexpr const char* listName = "counts";
    QDate day; // UTC
    QString event;
    int count = 0;

    // Nothing when a field is missing or wrong.
    static std::optional<VersionServiceUsageCount> Read(const QJsonObject& json)
    {
        using namespace ServiceAnswers;
        const auto count = IntMember(json, "count", 1, std::numeric_limits<int>::max());
        const VersionServiceUsageCount read{QDate::fromString(Text(json, "day"), Qt::ISODate),
                                            Text(json, "event"), count.value_or(0)};
        return count && read.day.isValid() && !read.event.isEmpty() ? std::optional(read) : std::nullopt;
    }
};

// For administrators: the counts of the last days, the newest day first.
struct ListUsageRequest
{
    using Answer = QVector<VersionServiceUsageCount>;

    int days = 0; // 1–90, today included

    WbHttpRequest ToHttp() const { return ServiceRoute::Fetch("/usage?days=%1", QString::number(days)); }
};
