// Where the service is and what its addresses look like.
//
// Pure but for ServiceOfEnvironment; any thread. The record is made once by who owns the library's windows or
// the run, and passed on.
#pragma once

#include <QString>

namespace pixelgrove {

struct ServiceAddress {
    QString base;     // scheme, host and what a mirror puts before the paths; no '/' at the end
    QString key;      // of six letters or digits, sent with every query
    QString problem;  // a clause for the user when there is no service to be asked; base is empty then
};

// The service at url, or the public one for an empty url. A url that is no plain http or https address gives
// a problem: a query that was meant for a mirror goes nowhere else. A key of another form than above gives
// the built-in one.
ServiceAddress ChooseService(const QString& url, const QString& key);

// As PIXELGROVE_SERVICE_URL and PIXELGROVE_API_KEY say.
ServiceAddress ServiceOfEnvironment();

// Complete addresses; empty without a base. What can't stand in an address is percent-encoded.
QString ShaderUrl(const ServiceAddress& service, const QString& id);
QString SearchUrl(const ServiceAddress& service, const QString& text);
QString MediumUrl(const ServiceAddress& service, const QString& fileName);
// Pages, for the user's browser.
QString ShaderPageUrl(const ServiceAddress& service, const QString& id);
QString UserPageUrl(const ServiceAddress& service, const QString& userName);

// What a search is to the service, before anything is encoded: blanks as '+', and the key. The user may add
// parameters of the service to the text; they stand as typed.
QString SearchQuery(const ServiceAddress& service, const QString& text);

}  // namespace pixelgrove
