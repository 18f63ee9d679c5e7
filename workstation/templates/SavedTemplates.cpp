// SPDX-License-Identifier: Apache-2.0

#include "SavedTemplates.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QSaveFile>

namespace
{
constexpr qint64 mostBytes = 1024 * 1024;

QString TextOf(const QDialog& dialog, const char* objectName)
{
    const auto* edit = dialog.findChild<QLineEdit*>(QLatin1String(objectName));
    return edit ? edit->text().trimmed() : QString();
}
} // namespace

SavedTemplates::SavedTemplates(const QString& place, std::function<int()> kind, QObject* parent)
    : QObject(parent), file(place), kindOfApp(std::move(kind))
{
    Read();
    qApp->installEventFilter(this);
}

bool SavedTemplates::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->inherits("RpaTemplateExportDlg")) {
        const auto* dialog = static_cast<QDialog*>(watched);
        connect(dialog, &QDialog::accepted, this, [this, dialog] { NoteAnswer(*dialog); });
    }
    return false;
}

void SavedTemplates::NoteAnswer(const QDialog& dialog)
{
    const QString folder = TextOf(dialog, "saveFileLineEdit");
    const QString name = TextOf(dialog, "nameLineEdit");
    const QString path = QDir::cleanPath(folder + QLatin1Char('/') + name);
    QStringList& known = files[kindOfApp()];
    if (!known.contains(path)) {
        known << path;
        known = known.mid(qMax(0, known.size() - mostFiles));
        Write();
    }
    // The editor writes when the dialog is gone.
    QMetaObject::invokeMethod(this, &SavedTemplates::SigSaved, Qt::QueuedConnection);
}

void SavedTemplates::Read()
{
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return;
    const QJsonObject kinds = QJsonDocument::fromJson(source.read(mostBytes)).object();
    for (auto it = kinds.begin(); it != kinds.end(); ++it) {
        QStringList& known = files[it.key().toInt()];
        for (const QJsonValue path : it.value().toArray())
            if (QDir::isAbsolutePath(path.toString()) && known.size() < mostFiles)
                known << path.toString();
    }
}

// Not remembered is not lost: the template is where its author put it.
void SavedTemplates::Write() const
{
    QJsonObject kinds;
    for (auto it = files.begin(); it != files.end(); ++it)
        kinds.insert(QString::number(it.key()), QJsonArray::fromStringList(it.value()));
    QSaveFile target(file);
    if (target.open(QIODevice::WriteOnly)) {
        target.write(QJsonDocument(kinds).toJson());
        target.commit();
    }
}
