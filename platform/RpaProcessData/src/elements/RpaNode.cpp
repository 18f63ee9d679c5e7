// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaNode.h>

#include <tuple>

namespace
{
auto Tie(const RpaNode& node)
{
    return std::tie(node.id, node.name, node.pageUrl, node.css, node.xpath, node.application, node.window,
                    node.path, node.attributes, node.unknown);
}
} // namespace

bool RpaNode::operator==(const RpaNode& other) const
{
    return Tie(*this) == Tie(other);
}
