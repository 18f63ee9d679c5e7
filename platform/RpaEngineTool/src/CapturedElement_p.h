// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaNode.h>

#include <QUrl>
#include <QVariantMap>

class RpaNodeManager;

// What the inspecting script told about an element. It was made from a foreign page.
namespace CapturedElement
{
// Why the element cannot be kept, for the author; empty when it can.
QString Refusal(const QVariantMap& description);

RpaNode ToNode(const QVariantMap& description, const QUrl& page);

// The element as it was captured before; with an empty id when it was not.
RpaNode FindSame(const RpaNodeManager& nodes, const RpaNode& node);
} // namespace CapturedElement
