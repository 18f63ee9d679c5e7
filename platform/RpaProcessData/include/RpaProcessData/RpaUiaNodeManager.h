// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaNodeManager.h>

// The captured elements of desktop applications.
class RPAPROCESSDATA_EXPORT RpaUiaNodeManager : public RpaNodeManager
{
    Q_OBJECT

public:
    explicit RpaUiaNodeManager(QObject* parent = nullptr);
};
