// WebClient: the program's one road to the network: fetches what an http or https address answers, whole.
//
// A fetch blocks, so windows run theirs on a worker. One client is used by one thread at a time; it keeps its
// connection for the next fetch from the same host.
//
// An answer is what the server sent as body, decoded where it was compressed, whatever its status: an error
// page is an answer too. Redirects are followed, to http and https alone, and never from https back to http.
// Certificates are verified, also against those in SSL_CERT_FILE. Proxies are those of the environment.
// Nothing is cached here, and nothing tried twice.
#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>

namespace pixelgrove {

enum class FetchFailure {
    None,
    BadAddress,    // no http or https address, also where a redirect led
    NoConnection,  // the host isn't known or can't be reached, or no network
    Refused,       // nobody listens there
    TimedOut,      // no connection within the limit, or no byte of the answer
    Tls,           // no secure connection to that host
    Stopped,       // by the stop token or the progress function
    TooLarge,      // also where memory ran out
    Broken,        // the answer was cut short or damaged, or redirects don't end
};

struct FetchResult {
    FetchFailure failure = FetchFailure::None;
    QString reason;   // a clause for the user; empty without a failure
    QByteArray body;  // empty with a failure; may be empty without one
};

// How a fetch is made, so that what needs one needn't know on which thread it runs and who waits.
using FetchFunction = std::function<FetchResult(const QString& url)>;

struct FetchLimits {
    std::chrono::milliseconds connect{30'000};  // until a connection is up
    std::chrono::milliseconds silence{30'000};  // on it without a byte
    qint64 bytes = qint64(256) << 20;           // of the decoded answer
};

class WebClient {
  public:
    explicit WebClient(const FetchLimits& limits = {});
    ~WebClient();
    WebClient(const WebClient&) = delete;
    WebClient& operator=(const WebClient&) = delete;

    // Called on the fetching thread with the bytes so far, first with 0; false stops the fetch.
    using Progress = std::function<bool(qint64 bytes)>;

    // Returns when the answer is there, or why there is none. A stop that is requested, by any thread, ends
    // it at once, whatever it waits for.
    FetchResult Fetch(const QString& url, const std::stop_token& stop = {}, const Progress& progress = {});

  private:
    class Transfer;
    struct Session;
    FetchLimits limits_;
    std::unique_ptr<Session> session_;  // from the first fetch on
};

}  // namespace pixelgrove
