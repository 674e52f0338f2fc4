#include "net/CurlLibrary.h"

#include "platform/LateLibrary.h"

namespace pixelgrove {

namespace {

CurlLibrary Load() {
    CurlLibrary curl{};
    LateLibrary library("libcurl.so.4");
    library.Find("curl_global_init", curl.globalInit);
    library.Find("curl_easy_init", curl.easyInit);
    library.Find("curl_easy_reset", curl.easyReset);
    library.Find("curl_easy_setopt", curl.easySetopt);
    library.Find("curl_easy_getinfo", curl.easyGetinfo);
    library.Find("curl_easy_cleanup", curl.easyCleanup);
    library.Find("curl_multi_init", curl.multiInit);
    library.Find("curl_multi_add_handle", curl.multiAddHandle);
    library.Find("curl_multi_remove_handle", curl.multiRemoveHandle);
    library.Find("curl_multi_perform", curl.multiPerform);
    library.Find("curl_multi_info_read", curl.multiInfoRead);
    library.Find("curl_multi_poll", curl.multiPoll);
    library.Find("curl_multi_wakeup", curl.multiWakeup);
    library.Find("curl_multi_cleanup", curl.multiCleanup);
    curl.isReady = library.IsComplete() && curl.globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return curl;
}

}  // namespace

const CurlLibrary& Curl() {
    static const CurlLibrary curl = Load();
    return curl;
}

}  // namespace pixelgrove
