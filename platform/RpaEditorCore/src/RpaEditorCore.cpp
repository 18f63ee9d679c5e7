#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
