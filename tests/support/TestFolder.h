// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// A folder of the running test that goes with it. On Windows a file cannot be removed while somebody has it
// open, and a process or thread that has just been ended may hold its files for a moment longer.
class TestFolder : public QTemporaryDir
{
public:
    using QTemporaryDir::QTemporaryDir;

    ~TestFolder()
    {
        if (isValid() && autoRemove()) {
            // What is left then, the base class tries and warns of.
            setAutoRemove(!QTest::qWaitFor([this] { return QDir(path()).removeRecursively(); }, patienceMs));
        }
    }

private:
    static constexpr int patienceMs = 30000;
};
