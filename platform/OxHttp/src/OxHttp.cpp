#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>
#include <OxHttp/IHttpRequest.h>
#include <OxHttp/IHttpResponse.h>
