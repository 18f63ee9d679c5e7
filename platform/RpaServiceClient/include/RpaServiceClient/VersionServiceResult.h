// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>

// Answer of one request. value counts only when success is true; errorDesc, in Chinese and fit to be shown,
// only when it is not. errorCode is the service's stable name of a refusal ("name-taken", "bad-credentials"),
// empty when the failure was none of the service's.
template <typename Value>
struct VersionServiceResult
{
    bool success = false;
    Value value{};
    QString errorDesc;
    QString errorCode;

    // Of an answer that the reader turns into the value, where it can be used.
    static VersionServiceResult Of(const WbHttpAnswer& answer,
                                   std::optional<Value> (*read)(const WbHttpAnswer& answer))
    {
        if (!answer.IsSuccess())
            return {false, {}, ServiceAnswers::FailureText(answer), ServiceAnswers::RefusalCode(answer)};
        const std::optional<Value> value = read(answer);
        if (!value)
            return {false, {}, ServiceAnswers::UnusableText(), {}};
        return {true, *value, {}, {}};
    }
};
