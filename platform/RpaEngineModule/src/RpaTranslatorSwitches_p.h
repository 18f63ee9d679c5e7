// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaTranslator.h>

// How the next process is to be translated.
class RpaTranslatorSwitches : public IRpaTranslator
{
public:
    void SetTranslateStatements(bool visual) override { translateStatements = visual; }
    void SetReportStatements(bool visual) override { reportStatements = visual; }

    bool GetTranslateStatements() const { return translateStatements; }

private:
    bool translateStatements = true;
    bool reportStatements = true;
};
