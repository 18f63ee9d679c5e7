// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

#include <functional>

class QDialog;

// Remembers where the author wrote templates outside the workstation's own folders, so that those are offered
// too. The editor tells nobody; it is seen from its dialog. GUI thread.
class SavedTemplates : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostFiles = 200; // the oldest are forgotten

    // file: where it is remembered. kindOfApp: of the app that is open now.
    SavedTemplates(const QString& file, std::function<int()> kindOfApp, QObject* parent = nullptr);

    // The template files of a kind of app, in the order of their first writing. They may be gone.
    QStringList GetFiles(int kind) const { return files.value(kind); }

signals:
    // One was written, or was tried to; also over one that is known.
    void SigSaved();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void NoteAnswer(const QDialog& dialog);
    void Read();
    void Write() const;

    const QString file;
    const std::function<int()> kindOfApp;
    QHash<int, QStringList> files;
};
