// SPDX-License-Identifier: Apache-2.0

#include "Router.h"

#include "Percent.h"

namespace server
{
namespace
{
QList<QByteArray> Split(const QByteArray& path)
{
    return path.mid(1).split('/');
}

bool Fits(const QList<QByteArray>& pattern, const QList<QByteArray>& path, std::vector<QString>& values)
{
    if (pattern.size() != path.size())
        return false;
    for (int i = 0; i < pattern.size(); ++i)
        if (pattern.at(i).startsWith('{'))
            values.push_back(DecodePercent(path.at(i)).value_or(QString()));
        else if (pattern.at(i) != path.at(i))
            return false;
    return true;
}
} // namespace

void Router::Add(Route route)
{
    segments.push_back(Split(route.pattern));
    routes.push_back(std::move(route));
}

Router::Match Router::Find(const QByteArray& method, const QByteArray& path) const
{
    Match match;
    if (!path.startsWith('/'))
        return match;
    const QList<QByteArray> parts = Split(path);
    for (std::size_t i = 0; i < routes.size(); ++i) {
        std::vector<QString> values;
        if (!Fits(segments[i], parts, values))
            continue;
        if (routes[i].method == method) {
            match.route = &routes[i];
            match.index = i;
            match.pathValues = std::move(values);
            return match;
        }
        if (!match.allowedMethods.isEmpty())
            match.allowedMethods += ", ";
        match.allowedMethods += routes[i].method;
    }
    return match;
}
} // namespace server
