#include "net/WebClient.h"

#include <QByteArrayView>
#include <QUrl>
#include <algorithm>
#include <array>
#include <cerrno>
#include <new>
#include <optional>
#include <utility>

#include "net/CurlLibrary.h"
#include "net/GzipReader.h"
#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// The service answers some programs and not others; this is what it knows.
constexpr char kUserAgent[] =
    "Mozilla/5.0 (Windows NT 10.0; Win64; x64) AppleWebKit/537.36 (KHTML, like Gecko) Chrome/125.0.0.0 "
    "Safari/537.36";

constexpr long kMaxRedirects = 10;

struct FreeHandle {
    void operator()(CURL* handle) const { Curl().easyCleanup(handle); }
};
struct FreeMulti {
    void operator()(CURLM* multi) const { Curl().multiCleanup(multi); }
};

// The handle's last transfer ended with this code.
FetchFailure FailureOf(CURLcode code, CURL* handle) {
    long status = 0, systemError = 0;
    Curl().easyGetinfo(handle, CURLINFO_RESPONSE_CODE, &status);
    Curl().easyGetinfo(handle, CURLINFO_OS_ERRNO, &systemError);
    switch (code) {
        case CURLE_OK:
            return FetchFailure::None;
        case CURLE_UNSUPPORTED_PROTOCOL:
            // Of a redirect, or the answer of something that speaks no HTTP.
            return status != 0 ? FetchFailure::BadAddress : FetchFailure::Broken;
        case CURLE_URL_MALFORMAT:
            return FetchFailure::BadAddress;
        case CURLE_COULDNT_RESOLVE_PROXY:
        case CURLE_COULDNT_RESOLVE_HOST:
            return FetchFailure::NoConnection;
        case CURLE_COULDNT_CONNECT:
            return systemError == ECONNREFUSED ? FetchFailure::Refused : FetchFailure::NoConnection;
        case CURLE_OPERATION_TIMEDOUT:
            return FetchFailure::TimedOut;
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CACERT_BADFILE:
        case CURLE_SSL_CERTPROBLEM:
        case CURLE_SSL_ENGINE_INITFAILED:
        case CURLE_SSL_ISSUER_ERROR:
            return FetchFailure::Tls;
        case CURLE_OUT_OF_MEMORY:
            return FetchFailure::TooLarge;
        default:
            return FetchFailure::Broken;
    }
}

QString ReasonOf(FetchFailure failure, const QString& host, const QString& detail) {
    const QString words = detail.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(detail);
    switch (failure) {
        case FetchFailure::None:
            break;
        case FetchFailure::BadAddress:
            return QStringLiteral("%1 leads on to an address that is not followed").arg(host);
        case FetchFailure::NoConnection:
            return QStringLiteral("there is no connection to %1").arg(host) + words;
        case FetchFailure::Refused:
            return QStringLiteral("%1 refuses connections").arg(host);
        case FetchFailure::TimedOut:
            return QStringLiteral("%1 does not answer").arg(host);
        case FetchFailure::Tls:
            return QStringLiteral("there is no secure connection to %1").arg(host) + words;
        case FetchFailure::Stopped:
            return QStringLiteral("it was stopped");
        case FetchFailure::TooLarge:
            return QStringLiteral("the answer of %1 is too large").arg(host);
        case FetchFailure::Broken:
            return QStringLiteral("the answer of %1 is damaged or cut short").arg(host) + words;
    }
    return {};
}

}  // namespace

// The library's handles, which keep the connection between fetches.
struct WebClient::Session {
    std::unique_ptr<CURLM, FreeMulti> multi{Curl().multiInit()};
    std::unique_ptr<CURL, FreeHandle> handle{Curl().easyInit()};
};

// One fetch: what the library's callbacks collect and decide.
class WebClient::Transfer {
  public:
    Transfer(Session& session, const FetchLimits& limits, const std::stop_token& stop,
             const Progress& progress)
        : session_(session), limits_(limits), stop_(stop), progress_(progress) {}

    FetchResult Run(const QString& url);

  private:
    bool SetOptions(const QByteArray& url);
    CURLcode Perform();
    std::optional<CURLcode> FinishedWith() const;
    milliseconds TimeLeft() const;

    // Ends the fetch with a failure that the library doesn't know.
    void Fail(FetchFailure failure) { failure_ = failure; }
    bool HasFailed() const { return failure_ != FetchFailure::None; }

    void NoteHeader(QByteArrayView line);
    size_t TakeBody(const char* bytes, size_t count);
    bool Append(const char* bytes, size_t count);
    bool IsWhole() const { return !gzip_ || gzip_->IsAtEnd(); }
    bool Tell(qint64 bytes);
    bool AllowRequest();
    void NoteBytes(curl_off_t received);

    Session& session_;
    const FetchLimits& limits_;
    const std::stop_token& stop_;
    const Progress& progress_;
    QByteArray body_;
    std::unique_ptr<GzipReader> gzip_;  // of an answer that comes so
    FetchFailure failure_ = FetchFailure::None;
    std::array<char, CURL_ERROR_SIZE> error_{};

    // Since when no byte came; nothing until a connection is up, which has a limit of its own.
    std::optional<Clock::time_point> silentSince_;
    curl_off_t received_ = 0;
    bool wasSecure_ = false;
};

bool WebClient::Transfer::SetOptions(const QByteArray& url) {
    CURL* const handle = session_.handle.get();
    Curl().easyReset(handle);
    bool isGood = true;
    const auto set = [&](CURLoption option, auto value) {
        isGood = Curl().easySetopt(handle, option, value) == CURLE_OK && isGood;
    };
    const bool isHttps = url.startsWith("https:");
    set(CURLOPT_URL, url.constData());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_REDIR_PROTOCOLS_STR, isHttps ? "https" : "http,https");
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, kMaxRedirects);
    set(CURLOPT_USERAGENT, kUserAgent);
    // Decoded here: the library takes a stream that breaks off for a whole one.
    set(CURLOPT_ACCEPT_ENCODING, "gzip");
    set(CURLOPT_HTTP_CONTENT_DECODING, 0L);
    set(CURLOPT_CONNECTTIMEOUT_MS, long(limits_.connect.count()));
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_QUICK_EXIT, 1L);  // doesn't wait for a thread that looks up a host
    set(CURLOPT_ERRORBUFFER, error_.data());
    // The library itself has no eye for this variable, which all else on the system follows.
    const QByteArray certificates = qgetenv("SSL_CERT_FILE");
    if (!certificates.isEmpty()) set(CURLOPT_CAINFO, certificates.constData());

    set(CURLOPT_WRITEDATA, this);
    set(
        CURLOPT_WRITEFUNCTION, +[](char* bytes, size_t, size_t count, void* self) {
            return static_cast<Transfer*>(self)->TakeBody(bytes, count);
        });
    set(CURLOPT_HEADERDATA, this);
    set(
        CURLOPT_HEADERFUNCTION, +[](char* bytes, size_t, size_t count, void* self) {
            static_cast<Transfer*>(self)->NoteHeader({bytes, qsizetype(count)});
            return count;
        });
    set(CURLOPT_PREREQDATA, this);
    set(
        CURLOPT_PREREQFUNCTION, +[](void* self, char*, char*, int, int) {
            return static_cast<Transfer*>(self)->AllowRequest() ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
        });
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_XFERINFODATA, this);
    set(
        CURLOPT_XFERINFOFUNCTION, +[](void* self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t) {
            static_cast<Transfer*>(self)->NoteBytes(received);
            return 0;
        });
    return isGood;
}

// Of each answer on the way: a redirect has headers as well.
void WebClient::Transfer::NoteHeader(QByteArrayView line) {
    silentSince_ = Clock::now();
    if (line.startsWith("HTTP/")) gzip_.reset();
    const qsizetype colon = line.indexOf(':');
    if (colon < 0 || line.first(colon).compare("Content-Encoding", Qt::CaseInsensitive) != 0) return;
    const QByteArrayView encoding = line.sliced(colon + 1).trimmed();
    const auto is = [&](const char* name) { return encoding.compare(name, Qt::CaseInsensitive) == 0; };
    if (is("gzip") || is("x-gzip"))
        gzip_ = std::make_unique<GzipReader>();
    else if (!encoding.isEmpty() && !is("identity"))
        Fail(FetchFailure::Broken);  // which nobody asked for
}

size_t WebClient::Transfer::TakeBody(const char* bytes, size_t count) {
    const bool isTaken =
        gzip_ ? gzip_->Take(bytes, count, [this](const char* at, size_t n) { return Append(at, n); })
              : Append(bytes, count);
    if (!isTaken && !HasFailed()) Fail(FetchFailure::Broken);
    return isTaken && Tell(body_.size()) ? count : 0;
}

bool WebClient::Transfer::Append(const char* bytes, size_t count) {
    if (qint64(count) > limits_.bytes - body_.size()) {
        Fail(FetchFailure::TooLarge);
        return false;
    }
    try {
        body_.append(bytes, qsizetype(count));
    } catch (const std::bad_alloc&) {
        Fail(FetchFailure::TooLarge);
        return false;
    }
    return true;
}

bool WebClient::Transfer::Tell(qint64 bytes) {
    if (!progress_ || progress_(bytes)) return true;
    Fail(FetchFailure::Stopped);
    return false;
}

// A connection is up, for the first request or one that a redirect asks for.
bool WebClient::Transfer::AllowRequest() {
    silentSince_ = Clock::now();
    const char* url = nullptr;
    Curl().easyGetinfo(session_.handle.get(), CURLINFO_EFFECTIVE_URL, &url);
    const bool isSecure = url && qstrnicmp(url, "https:", 6) == 0;
    if (wasSecure_ && !isSecure) {
        Fail(FetchFailure::BadAddress);
        return false;
    }
    wasSecure_ = isSecure;
    return true;
}

// By bytes as they come from the network: a compressed answer may give nothing for long.
void WebClient::Transfer::NoteBytes(curl_off_t received) {
    if (received == received_) return;
    received_ = received;
    silentSince_ = Clock::now();
}

milliseconds WebClient::Transfer::TimeLeft() const {
    // While there is no connection the library wakes up by itself when its limit is over.
    if (!silentSince_) return limits_.connect;
    const auto silent = std::chrono::duration_cast<milliseconds>(Clock::now() - *silentSince_);
    return std::max(limits_.silence - silent, milliseconds(0));
}

std::optional<CURLcode> WebClient::Transfer::FinishedWith() const {
    int left = 0;
    while (const CURLMsg* message = Curl().multiInfoRead(session_.multi.get(), &left))
        if (message->msg == CURLMSG_DONE) return message->data.result;
    return std::nullopt;
}

// Until the fetch has ended one way or another; CURLE_OK also where Fail was called.
CURLcode WebClient::Transfer::Perform() {
    CURLM* const multi = session_.multi.get();
    for (;;) {
        int running = 0;
        if (Curl().multiPerform(multi, &running) != CURLM_OK) return CURLE_OUT_OF_MEMORY;
        if (HasFailed()) return CURLE_OK;
        if (const std::optional<CURLcode> code = FinishedWith()) return *code;
        const milliseconds left = TimeLeft();
        if (stop_.stop_requested())
            Fail(FetchFailure::Stopped);
        else if (left == milliseconds(0))
            Fail(FetchFailure::TimedOut);
        if (HasFailed()) return CURLE_OK;
        if (Curl().multiPoll(multi, nullptr, 0, int(left.count()), nullptr) != CURLM_OK)
            return CURLE_OUT_OF_MEMORY;
    }
}

FetchResult WebClient::Transfer::Run(const QString& url) {
    const QUrl parsed(url);
    const QByteArray address = parsed.toEncoded();
    const QString host = InQuotes(parsed.host());
    const auto failure = [&](FetchFailure what, const QString& detail = {}) {
        return FetchResult{what, ReasonOf(what, host, detail), {}};
    };
    const bool isWeb = parsed.scheme() == QLatin1String("https") || parsed.scheme() == QLatin1String("http");
    if (!isWeb || parsed.host().isEmpty())
        return {FetchFailure::BadAddress,
                QStringLiteral("%1 is no http or https address").arg(InQuotes(url)),
                {}};
    if (!SetOptions(address)) return failure(FetchFailure::TooLarge);
    if (!Tell(0)) return failure(FetchFailure::Stopped);

    CURLM* const multi = session_.multi.get();
    CURL* const handle = session_.handle.get();
    if (Curl().multiAddHandle(multi, handle) != CURLM_OK) return failure(FetchFailure::TooLarge);
    const CURLcode code = [&] {
        // Ends a wait in Perform. Gone before the handles are touched again.
        const std::stop_callback wake(stop_, [multi] { Curl().multiWakeup(multi); });
        return Perform();
    }();
    Curl().multiRemoveHandle(multi, handle);

    if (HasFailed()) return failure(failure_);
    if (code != CURLE_OK) return failure(FailureOf(code, handle), QString::fromUtf8(error_.data()).trimmed());
    if (!IsWhole()) return failure(FetchFailure::Broken);
    return {FetchFailure::None, {}, std::move(body_)};
}

WebClient::WebClient(const FetchLimits& limits) : limits_(limits) {}

WebClient::~WebClient() = default;

FetchResult WebClient::Fetch(const QString& url, const std::stop_token& stop, const Progress& progress) {
    if (!session_ && Curl().isReady) session_ = std::make_unique<Session>();
    if (!session_ || !session_->multi || !session_->handle)
        return {FetchFailure::NoConnection, QStringLiteral("the system gives no means to connect"), {}};
    return Transfer(*session_, limits_, stop, progress).Run(url);
}

}  // namespace pixelgrove
