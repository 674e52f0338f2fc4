// AboutBox: what the program is, how it is used, where its files are, and whether there is a newer build. It
// stays open beside its owner until it is closed, and is deleted then. Links between documents, and pages,
// can be gone back and forth.
//
// Main thread; a check for a newer build runs on a thread that ends with the box.
#pragma once

#include <QList>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "ui/about/AboutPages.h"
#include "ui/about/SiteButton.h"
#include "update/UpdateWorker.h"
#include "windows/widgets/FrameWindow.h"

namespace Ui {
class AboutBox;
}

namespace pixelgrove {

class PagePictures;

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

    // To what was shown before, and to where one came back from; nothing where there is no such place.
    void GoBack() { Return(back_, forward_); }
    void GoForward() { Return(forward_, back_); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    struct Place {
        AboutPage page = AboutPage::About;
        QString document;  // empty on a page that is none
        int scroll = 0;
    };

    void ConnectButtons();
    void StartUpdateCheck();
    void TakeUpdateText();
    QString PlainText(AboutPage page) const;
    Place PresentPlace() const;
    void Leave();
    void Show(const Place& place);
    void Return(QList<Place>& from, QList<Place>& to);
    void FollowLink(const QUrl& link);
    bool TakeFindKey(const QKeyEvent& event);

    const std::unique_ptr<Ui::AboutBox> form_;
    const AboutSources sources_;
    const std::unique_ptr<PagePictures> pictures_;
    std::optional<Place> shown_;   // its scroll is where it began; none before the first page
    QList<Place> back_, forward_;  // the last one is the nearest
    QString updateText_;
    UpdateWorker update_;
    QTimer updateTimer_;  // runs until the check is over
};

// Shows the page in the box that the slot has, or in a new one over the owner, whose slot it is from then on.
AboutBox& ShowAboutBox(QWidget& owner, const AboutSources& sources, QPointer<AboutBox>& slot, AboutPage page);

}  // namespace pixelgrove
