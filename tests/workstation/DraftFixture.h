// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "DraftController.h"
#include "EditorPage.h"
#include "FaultServer.h"
#include "TestFolder.h"

#include <QSemaphore>

#include <memory>

// An editor page over drafts of its own, before a service of two apps: "x" (应用一) has the versions 甲 and 乙 and
// the gray 丙, "y" (应用二) has 丁. The instructions of a version are its id.
class DraftFixture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    static AppRecord AppX();
    static AppRecord AppY();

    // The editor shows the first version of the app, on the page of the instructions.
    void Open(const AppRecord& app);
    void Press(const char* button);
    void Type(const QString& text);
    // The instructions that the editor shows.
    QString Text() const;

    // What would change a version waits for the gate, and fails.
    QSemaphore gate;
    std::unique_ptr<DraftController> drafts;
    EditorPage* page = nullptr;

private:
    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<FaultServer> server;
    std::unique_ptr<QWidget> window;
};
