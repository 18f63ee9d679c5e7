// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>

#include <QString>

#include <functional>

// The places of a command's templates: "${name}". Any thread.
class RPAPROCESSDATA_EXPORT RpaPlaces
{
public:
    // The text with each place replaced by its value. In one pass from left to right, so that a value that
    // itself contains a place stays as it is; a place that is not closed is no place.
    static QString Fill(const QString& text, const std::function<QString(const QString& name)>& valueOf);
};
