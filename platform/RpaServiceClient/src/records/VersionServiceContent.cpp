// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/versions/VersionServiceContent.h>

using namespace ServiceRoute;

void VersionServiceContent::PutInto(WbHttpRequest* request) const
{
    AddHeader(request, "Content-Type", "application/json");
    AddHeader(request, "Version-Name", Escaped(name));
    AddHeader(request, "Version-Description", Escaped(description));
    AddHeader(request, "Version-Api", Escaped(apiVersion));
    request->body = data;
    request->bodyText = text;
    request->digestBody = true;
    // What could never be loaded again must not replace what can.
    request->guardBody = true;
}
