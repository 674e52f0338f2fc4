#include "net/WebClient.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "support/TestService.h"

namespace pixelgrove {
namespace {

using namespace std::chrono_literals;
using Failure = FetchFailure;

class WebClientTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { service_ = std::make_unique<test::TestService>(); }
    static void TearDownTestSuite() { service_.reset(); }
    void SetUp() override { ASSERT_TRUE(service_->IsReady()); }
    void TearDown() override { qunsetenv("SSL_CERT_FILE"); }

    static std::unique_ptr<test::TestService> service_;
    WebClient client_;
};

std::unique_ptr<test::TestService> WebClientTest::service_;

struct Row {
    const char* path;
    Failure failure;
    const char* body = "";
};

TEST_F(WebClientTest, TakesAnswersAsTheyCome) {
    const Row rows[] = {
        {"/plain/agent", Failure::None,
         "Mozilla/5.0 (Windows NT 10.0; Win64; x64) AppleWebKit/537.36 (KHTML, like Gecko) Chrome/125.0.0.0 "
         "Safari/537.36"},
        {"/plain/hello", Failure::None, "hello"},
        {"/gzip/hello", Failure::None, "hello"},
        {"/closing/hello", Failure::None, "hello"},
        {"/short/hello", Failure::None, "hel"},
        {"/plain/media/a/none", Failure::None, "<html>404</html>"},
        {"/page/x", Failure::None, "<!DOCTYPE html><title>Just a moment...</title>"},
        {"/empty/x", Failure::None, ""},
        {"/here/hello", Failure::None, "hello"},
        {"/cut/hello", Failure::Broken},
        {"/corrupt/hello", Failure::Broken},
        {"/trimmed/hello", Failure::Broken},
        {"/foreign/hello", Failure::Broken},
        {"/drop/hello", Failure::Broken},
        {"/garbage/hello", Failure::Broken},
        {"/circle/hello", Failure::Broken},
        {"/tofile/hello", Failure::BadAddress},
        {"/toftp/hello", Failure::BadAddress},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        const FetchResult result = client_.Fetch(service_->Http(row.path));
        EXPECT_EQ(result.failure, row.failure) << qPrintable(result.reason);
        EXPECT_EQ(result.body.toStdString(), row.body);
        EXPECT_EQ(result.reason.isEmpty(), row.failure == Failure::None);
    }
    for (const char* url :
         {"", "file:///etc/hostname", "ftp://127.0.0.1/", "127.0.0.1/", "http:///x", "data:,x"})
        EXPECT_EQ(client_.Fetch(QLatin1String(url)).failure, Failure::BadAddress) << url;
}

TEST_F(WebClientTest, SecureConnectionsAreVerifiedAndStaySecure) {
    EXPECT_EQ(client_.Fetch(service_->Https("/plain/secret")).failure, Failure::Tls);
    EXPECT_EQ(client_.Fetch(service_->Http("/tohttps/secret")).failure, Failure::Tls);
    qputenv("SSL_CERT_FILE", service_->CertificatePath());
    const std::pair<QString, Failure> rows[] = {
        {service_->Https("/plain/secret"), Failure::None},
        {service_->Https("/here/secret"), Failure::None},
        {service_->Https("/tohttps/secret"), Failure::None},
        {service_->Http("/tohttps/secret"), Failure::None},
        {service_->Https("/tohttp/secret"), Failure::BadAddress},
        {service_->Http("/roundabout/secret"), Failure::BadAddress},
    };
    for (const auto& [url, failure] : rows) {
        const FetchResult result = client_.Fetch(url);
        EXPECT_EQ(result.failure, failure) << qPrintable(url + u' ' + result.reason);
        EXPECT_EQ(result.body.toStdString(), failure == Failure::None ? "secret" : "");
    }
    // What was refused was not even asked for.
    const QByteArray asked = client_.Fetch(service_->Http("/plain/requests")).body;
    EXPECT_EQ(asked.count("/plain/secret"), 4) << asked.toStdString();
    const QString otherName =
        service_->Https("/plain/secret").replace(QLatin1String("127.0.0.1"), QLatin1String("localhost"));
    EXPECT_EQ(client_.Fetch(otherName).failure, Failure::Tls);
}

TEST_F(WebClientTest, AnswersHaveABound) {
    FetchLimits limits;
    limits.bytes = 1 << 20;
    WebClient client(limits);
    for (const char* path : {"/endless/x", "/bomb/x"})
        EXPECT_EQ(client.Fetch(service_->Http(path)).failure, Failure::TooLarge) << path;
    limits.bytes = 5;
    EXPECT_EQ(WebClient(limits).Fetch(service_->Http("/gzip/hello")).body, "hello");
    EXPECT_EQ(WebClient(limits).Fetch(service_->Http("/plain/hello!")).failure, Failure::TooLarge);
}

TEST_F(WebClientTest, WhatDoesNotMoveFails) {
    FetchLimits limits;
    limits.silence = 100ms;
    for (const char* path : {"/hang/hello", "/pause/hello"})
        EXPECT_EQ(WebClient(limits).Fetch(service_->Http(path)).failure, Failure::TimedOut) << path;
    EXPECT_EQ(WebClient(limits).Fetch(service_->Silent("http")).failure, Failure::TimedOut);
    limits = {};
    limits.connect = 100ms;
    EXPECT_EQ(WebClient(limits).Fetch(service_->Silent("https")).failure, Failure::TimedOut);
}

// Without the stop each of these would wait for its limit.
TEST_F(WebClientTest, AStopEndsEveryWait) {
    for (const QString& url :
         {service_->Http("/hang/hello"), service_->Http("/pause/hello"), service_->Silent("https")}) {
        std::stop_source stop;
        std::promise<void> begun;
        std::thread stopper([&] {
            begun.get_future().wait();
            stop.request_stop();
        });
        bool isFirst = true;
        const FetchResult result = client_.Fetch(url, stop.get_token(), [&](qint64) {
            if (std::exchange(isFirst, false)) begun.set_value();
            return true;
        });
        stopper.join();
        EXPECT_EQ(result.failure, Failure::Stopped) << qPrintable(url);
        // A stop that came before the fetch counts as well.
        EXPECT_EQ(client_.Fetch(url, stop.get_token()).failure, Failure::Stopped);
    }
    qint64 seen = -1;
    const FetchResult result = client_.Fetch(service_->Http("/endless/x"), {}, [&](qint64 bytes) {
        seen = bytes;
        return bytes == 0;
    });
    EXPECT_EQ(result.failure, Failure::Stopped);
    EXPECT_GT(seen, 0);
    EXPECT_EQ(client_.Fetch(service_->Http("/plain/hello")).body, "hello");  // the client is as good as new
}

TEST_F(WebClientTest, AServerThatIsGoneIsNamed) {
    test::TestService other;
    ASSERT_TRUE(other.IsReady());
    const QString url = other.Http("/plain/hello");
    EXPECT_EQ(client_.Fetch(url).body, "hello");
    other.Stop();
    const FetchResult result = client_.Fetch(url);
    EXPECT_EQ(result.failure, Failure::Refused) << qPrintable(result.reason);
    EXPECT_EQ(result.reason, QStringLiteral("\"127.0.0.1\" refuses connections"));
}

}  // namespace
}  // namespace pixelgrove
