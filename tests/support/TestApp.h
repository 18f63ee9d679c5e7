// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QApplication>
#include <QString>

// The application that widget tests run in: the product's fonts, and warnings that nobody announced fail the
// test function they appear in.
class TestApp : public QApplication
{
    Q_OBJECT

public:
    TestApp(int& argc, char** argv);

    // Runs all test functions of the object; returns the number of failures.
    static int Run(QObject* test, int argc, char** argv);

    // Lets the next warning that contains this text pass.
    static void ExpectWarning(const QString& part);
};

// The main function of a test program with widgets.
#define RPA_TEST_MAIN(TestClass)                                                                             \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        TestApp app(argc, argv);                                                                             \
        TestClass test;                                                                                      \
        return TestApp::Run(&test, argc, argv);                                                              \
    }
