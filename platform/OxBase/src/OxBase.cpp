#include <OxBase/DpiTool.h>
#include <OxBase/IDpiAdapter.h>
#include <OxBase/OxBlocker.h>
#include <OxBase/OxJsonUtil.h>
