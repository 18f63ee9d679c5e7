#pragma once

#include <RpaEngineTool/RpaEngineToolExport.h>

#include <QObject>

// Captures elements for the statements of a process. GUI thread.
class RPAENGINETOOL_EXPORT IRpaInspector : public QObject
{
    Q_OBJECT

public:
    explicit IRpaInspector(QObject* parent = nullptr);
    ~IRpaInspector() override;

    // Whether the user is capturing an element right now; a process must not be run meanwhile.
    virtual bool IsCapturing() const = 0;
};
