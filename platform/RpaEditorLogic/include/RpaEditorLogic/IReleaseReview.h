// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEditorLogic/RpaEditorLogicExport.h>

#include <QString>

#include <functional>

class GrayOrReleaseRequest;

// Looks at a release before it is asked of the server, such as at what goes along to strangers. GUI thread
// only.
class RPAEDITORLOGIC_EXPORT IReleaseReview
{
public:
    virtual ~IReleaseReview();

    // Calls decided once, now or later: with an empty text to let the release go, else with what the author
    // is told instead.
    virtual void Review(const GrayOrReleaseRequest& request,
                        const std::function<void(const QString& refusal)>& decided) = 0;
};
