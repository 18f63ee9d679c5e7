// SPDX-License-Identifier: Apache-2.0

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>

HttpObserverBase::~HttpObserverBase()
{
    // Observers unregister themselves before their members go; this only catches one that forgot.
    HttpNotifyManager::Instance()->RemoveAllMessage(this);
}
