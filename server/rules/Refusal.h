// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace server
{
// Why a request is not done: an HTTP status, a stable name for programs, a text for the author. Rules and
// routes throw it, rules before they change anything.
struct Refusal
{
    int status = 400;
    const char* code = "";
    QString message;
};

namespace refusals
{
inline Refusal NotFound()
{
    return {404, "not-found", QStringLiteral("内容不存在、已被删除，或您没有查看权限。")};
}
inline Refusal Forbidden()
{
    return {403, "forbidden", QStringLiteral("您没有执行此操作的权限。")};
}
inline Refusal NotTheDeleter()
{
    return {403, "forbidden", QStringLiteral("只有应用的创建者和管理员可以删除应用。")};
}
inline Refusal TooLargeToCopy()
{
    return {409, "too-large",
            QStringLiteral("应用的全部版本超过 128 MB，不能复制。请先删除不再需要的版本。")};
}
inline Refusal AppNameTaken()
{
    return {409, "name-taken", QStringLiteral("应用名称已存在，请换一个名称。")};
}
inline Refusal VersionNameTaken()
{
    return {409, "name-taken", QStringLiteral("版本名称已存在，请换一个名称。")};
}
inline Refusal NotDevelop()
{
    return {409, "not-develop", QStringLiteral("该版本已灰度或上线，不能覆盖，请保存为新版本。")};
}
inline Refusal NoGrayVersion()
{
    return {409, "no-gray", QStringLiteral("该应用目前没有灰度版本。")};
}
inline Refusal NotReleased()
{
    return {409, "not-released", QStringLiteral("该版本没有这样发布过，不能恢复给使用者。")};
}
inline Refusal ReleaseChanged()
{
    return {409, "release-changed",
            QStringLiteral("期间使用者使用的版本已经变化，没有执行，请查看现在的情况后再操作。")};
}
inline Refusal BadInvitation()
{
    return {404, "bad-invitation", QStringLiteral("邀请码不存在，请检查后重新输入。")};
}
inline Refusal InvitationClosed(const QString& why)
{
    return {409, "invitation-closed", why};
}
inline Refusal TooManyInvitations()
{
    return {409, "too-many-invitations", QStringLiteral("有效的邀请码过多，请先停用不再需要的邀请码。")};
}
inline Refusal RevisionChanged(const QString& savedBy)
{
    return {412, "revision-changed",
            QStringLiteral("该版本已被“%1”修改，您的内容没有覆盖它。请保存为新版本，或刷新后再修改。")
                .arg(savedBy)};
}
} // namespace refusals
} // namespace server
