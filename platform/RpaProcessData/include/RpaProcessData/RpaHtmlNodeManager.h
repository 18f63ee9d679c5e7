// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaNodeManager.h>

// The captured elements of web pages.
class RPAPROCESSDATA_EXPORT RpaHtmlNodeManager : public RpaNodeManager
{
    Q_OBJECT

public:
    explicit RpaHtmlNodeManager(QObject* parent = nullptr);
};
