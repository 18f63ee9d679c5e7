// SPDX-License-Identifier: Apache-2.0

// Makes the shipped templates from their sources: an app as JSON goes through the app model and is written as
// the editor exports it. Or checks that they are so made.
//
// usage: write_templates --write|--check resources/templates

#include "RpaTemplateData.h"
#include "RpaTemplateFile.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

namespace
{
constexpr int visualKind = 0;

QByteArray ReadFile(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool WriteFile(const QString& name, const QByteArray& content)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

// False when the source is no app.
bool Make(const QJsonObject& source, RpaTemplateData& record)
{
    RpaAppData app;
    if (!app.Parse(QJsonDocument(source.value(QLatin1String("app")).toObject()).toJson()))
        return false;
    if (app.GetAppExtendInfo()->GetAppKind() == visualKind)
        app.CheckPackageInfo();
    record.SetTemplateName(source.value(QLatin1String("name")).toString());
    record.SetTemplateDirection(source.value(QLatin1String("description")).toString());
    record.SetAppData(app.ToJson());
    return !record.GetTemplateName().isEmpty();
}

bool Do(bool write, const QString& source, const QString& folder)
{
    RpaTemplateData record;
    if (!Make(QJsonDocument::fromJson(ReadFile(source)).object(), record))
        return false;
    const QString target =
        folder + QLatin1Char('/') + QFileInfo(source).baseName() + QStringLiteral(".template");
    const QByteArray content = RpaTemplateFile::Encode(record);
    if (content.isEmpty())
        return false;
    return write ? WriteFile(target, content) : ReadFile(target) == content;
}
} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const bool write = arguments.value(1) == QLatin1String("--write");
    const QString base = arguments.value(2);
    int count = 0;
    for (const QString& kind : {QStringLiteral("visual"), QStringLiteral("program")}) {
        const QDir sources(base + QStringLiteral("/source/") + kind);
        for (const QString& name : sources.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
            if (!Do(write, sources.filePath(name), base + QLatin1Char('/') + kind)) {
                QTextStream(stderr) << (write ? "cannot write" : "out of date: ") << name << Qt::endl;
                return 1;
            }
            ++count;
        }
    }
    QTextStream(stdout) << count << " templates" << Qt::endl;
    return count > 0 ? 0 : 1;
}
