// SPDX-License-Identifier: Apache-2.0

#include "RestoredWork_p.h"

#include <utility>

void RestoredWork::Forget()
{
    waiting.reset();
    strangers.clear();
}

bool RestoredWork::IsWaitingFor(const QString& versionId) const
{
    return waiting && waiting->versionId == versionId;
}

std::optional<RestoredContent> RestoredWork::Take(const QString& versionId, int revision,
                                                  const QByteArray& sha256)
{
    strangers.remove(versionId);
    if (!IsWaitingFor(versionId))
        return std::nullopt;
    if (waiting->origin.inDoubt.contains(sha256) && revision > waiting->origin.baseRevision) {
        waiting->baseRevision = revision;
        waiting->origin = {versionId, revision, waiting->origin.draftName};
    }
    if (waiting->baseRevision == 0)
        strangers.insert(versionId);
    return std::exchange(waiting, std::nullopt);
}

QString RestoredWork::Refusal(const QString& versionId) const
{
    if (!strangers.contains(versionId))
        return {};
    return QStringLiteral("恢复的草稿不是在该版本上修改的，您的内容仍在编辑器中，请另存为新版本");
}
