// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/versions/VersionServiceContent.h>

void VersionServiceContent::PutInto(WbHttpRequest* request) const
{
    request->headers.push_back({"Content-Type", "application/json"});
    request->headers.push_back({"Version-Name", QUrl::toPercentEncoding(name)});
    request->headers.push_back({"Version-Description", QUrl::toPercentEncoding(description)});
    request->headers.push_back({"Version-Api", QUrl::toPercentEncoding(apiVersion)});
    request->body = data;
    request->bodyText = text;
    request->digestBody = true;
    // What could never be loaded again must not replace what can.
    request->guardBody = true;
}
