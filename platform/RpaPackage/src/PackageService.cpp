#include "PackageService_p.h"

#include <QLoggingCategory>

namespace {
Q_LOGGING_CATEGORY(packageLog, "rpa.package")
}

void PackageService::Install(const QString& json)
{
    configuration = json;
    qCInfo(packageLog) << "This version cannot install packages; nothing was installed for" << json;
    // The requester connects before it calls, but must not be called back inside its own call.
    QMetaObject::invokeMethod(this, &PackageService::SigInstallFinished, Qt::QueuedConnection);
}

void PackageService::Reset(const QString& json)
{
    configuration = json;
}
