// AboutBox: what the program is, how it is used, where its files are, and whether there is a newer build. It
// stays open beside its owner until it is closed, and is deleted then.
//
// Main thread; a check for a newer build runs on a thread that ends with the box.
#pragma once

#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <array>
#include <functional>
#include <memory>

#include "ui/about/AboutPages.h"
#include "ui/about/SiteButton.h"
#include "update/UpdateWorker.h"
#include "windows/widgets/FrameWindow.h"

namespace Ui {
class AboutBox;
}

namespace pixelgrove {

struct AboutSite {
    SitePicture picture = SitePicture::None;
    const char16_t* toolTip = u"";
    QUrl address;
};

// What the box shows beside its documents.
struct AboutSources {
    QString documents;      // folder
    QString updateAddress;  // as UpdateAddress(): without one nothing is asked
    QString buildStamp;
    QString properties;  // a text of the caller's; without one that page has no button
    std::array<AboutSite, 5> sites;
    std::function<void(const QUrl& address)> openUrl;
};

class AboutBox : public FrameWindow {
    Q_OBJECT

  public:
    AboutBox(QWidget* owner, AboutSources sources);
    ~AboutBox() override;

    void ShowPage(AboutPage page);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void ConnectButtons();
    void StartUpdateCheck();
    void TakeUpdateText();
    QString PlainText(AboutPage page) const;
    void FollowLink(const QUrl& link);
    bool TakeFindKey(const QKeyEvent& event);

    const std::unique_ptr<Ui::AboutBox> form_;
    const AboutSources sources_;
    AboutPage page_ = AboutPage::About;
    QString updateText_;
    UpdateWorker update_;
    QTimer updateTimer_;  // runs until the check is over
};

// Shows the page in the box that the slot has, or in a new one over the owner, whose slot it is from then on.
AboutBox& ShowAboutBox(QWidget& owner, const AboutSources& sources, QPointer<AboutBox>& slot, AboutPage page);

}  // namespace pixelgrove
