// libcurl's functions, which are loaded with the first WebClient that fetches. For this folder alone.
//
// Any thread.
#pragma once

#include <curl/curl.h>

namespace pixelgrove {

struct CurlLibrary {
    decltype(&curl_global_init) globalInit;
    decltype(&curl_easy_init) easyInit;
    decltype(&curl_easy_reset) easyReset;
    decltype(&curl_easy_setopt) easySetopt;
    decltype(&curl_easy_getinfo) easyGetinfo;
    decltype(&curl_easy_cleanup) easyCleanup;
    decltype(&curl_multi_init) multiInit;
    decltype(&curl_multi_add_handle) multiAddHandle;
    decltype(&curl_multi_remove_handle) multiRemoveHandle;
    decltype(&curl_multi_perform) multiPerform;
    decltype(&curl_multi_info_read) multiInfoRead;
    decltype(&curl_multi_poll) multiPoll;
    decltype(&curl_multi_wakeup) multiWakeup;
    decltype(&curl_multi_cleanup) multiCleanup;
    bool isReady;  // nothing may be called else
};

// Loads and prepares the library at the first call.
const CurlLibrary& Curl();

}  // namespace pixelgrove
