#include "ui/about/AboutBox.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QShortcut>
#include <utility>

#include "core/BaseFolders.h"
#include "look/widgets/Theme.h"
#include "platform/LoadedLibraries.h"
#include "ui/about/PagePictures.h"
#include "ui/about/PageView.h"
#include "ui_AboutBox.h"
#include "windows/widgets/DialogScaler.h"
#include "windows/widgets/Dialogs.h"

namespace pixelgrove {

namespace {

constexpr int kRaiseAfterMs = 100;
constexpr int kUpdatePollMs = 200;

std::unique_ptr<Ui::AboutBox> MakeForm(QWidget* client) {
    auto form = std::make_unique<Ui::AboutBox>();
    client->setFont(FormFont());
    form->setupUi(client);
    return form;
}

// By AboutPage.
std::array<QPushButton*, size_t(AboutPage::Count)> PageButtons(const Ui::AboutBox& form) {
    return {form.aboutButton,   form.helpButton,   form.updatesButton,   form.licenseButton,
            form.foldersButton, form.thanksButton, form.propertiesButton};
}

}  // namespace

AboutBox::AboutBox(QWidget* owner, AboutSources sources)
    : FrameWindow(Kind::Dialog, owner),
      form_(MakeForm(Client())),
      sources_(std::move(sources)),
      pictures_(std::make_unique<PagePictures>(*form_->pageText)) {
    setAttribute(Qt::WA_DeleteOnClose);
    FitToForm(*this);
    SetUpPageView(*form_->pageText);
    ConnectButtons();
    StartUpdateCheck();
    form_->pageText->viewport()->installEventFilter(this);
    form_->pageText->setFocus();
    QTimer::singleShot(kRaiseAfterMs, this, &QWidget::raise);
}

AboutBox::~AboutBox() = default;

void AboutBox::ConnectButtons() {
    const auto pages = PageButtons(*form_);
    for (size_t i = 0; i < pages.size(); ++i)
        connect(pages[i], &QAbstractButton::clicked, this, [this, i] { ShowPage(AboutPage(i)); });
    form_->propertiesButton->setVisible(!sources_.properties.isEmpty());
    SiteButton* const siteButtons[] = {form_->siteButton0, form_->siteButton1, form_->siteButton2,
                                       form_->siteButton3, form_->siteButton4};
    for (size_t i = 0; i < sources_.sites.size(); ++i) {
        const AboutSite& site = sources_.sites[i];
        siteButtons[i]->SetPicture(site.picture);
        siteButtons[i]->setToolTip(QString::fromUtf16(site.toolTip));
        siteButtons[i]->setAccessibleName(siteButtons[i]->toolTip());
        connect(siteButtons[i], &QAbstractButton::clicked, this,
                [this, i] { sources_.openUrl(sources_.sites[i].address); });
    }
    form_->backButton->SetPicture(SitePicture::Back);
    form_->forwardButton->SetPicture(SitePicture::Forward);
    connect(form_->backButton, &QAbstractButton::clicked, this, &AboutBox::GoBack);
    connect(form_->forwardButton, &QAbstractButton::clicked, this, &AboutBox::GoForward);
    // Ahead of the view, which has such keys too.
    new QShortcut(QKeySequence::Back, this, this, &AboutBox::GoBack);
    new QShortcut(QKeySequence::Forward, this, this, &AboutBox::GoForward);
    connect(form_->pageText, &QTextBrowser::anchorClicked, this, &AboutBox::FollowLink);
    connect(form_->findEdit, &QLineEdit::textEdited, this,
            [this](const QString& text) { FindOnPage(*form_->pageText, text, FindStep::Again); });
    connect(form_->okButton, &QAbstractButton::clicked, this, &QWidget::close);
}

void AboutBox::StartUpdateCheck() {
    if (sources_.updateAddress.isEmpty()) {
        updateText_ = QStringLiteral("No update address is set.");
        return;
    }
    if (!update_.Start(sources_.updateAddress, sources_.buildStamp)) return;
    updateText_ = QStringLiteral("Checking for a newer build...");
    connect(&updateTimer_, &QTimer::timeout, this, &AboutBox::TakeUpdateText);
    updateTimer_.start(kUpdatePollMs);
}

void AboutBox::TakeUpdateText() {
    const std::optional<QString> text = update_.TakeText();
    if (!text) return;
    updateTimer_.stop();
    updateText_ = *text;
    if (shown_ && shown_->page == AboutPage::Updates) Show(PresentPlace());
}

QString AboutBox::PlainText(AboutPage page) const {
    switch (page) {
        case AboutPage::Updates:
            return updateText_;
        case AboutPage::Folders:
            return FolderListing(PathOf(PathId::DllBase), LoadedLibraries());
        case AboutPage::Properties:
            return sources_.properties;
        default:
            return {};
    }
}

void AboutBox::ShowPage(AboutPage page) {
    const QString document = DocumentOf(page);
    // Pressed again, it leads to the page's top.
    if (!shown_ || shown_->page != page || shown_->document != document) Leave();
    Show({.page = page, .document = document});
}

AboutBox::Place AboutBox::PresentPlace() const {
    Place place = *shown_;
    place.scroll = form_->pageText->verticalScrollBar()->value();
    return place;
}

// Keeps the present place for the way back.
void AboutBox::Leave() {
    if (shown_) back_.append(PresentPlace());
    forward_.clear();
}

void AboutBox::Show(const Place& place) {
    const bool isOther = !shown_ || shown_->page != place.page || shown_->document != place.document;
    shown_ = place;
    PageButtons(*form_)[size_t(place.page)]->setChecked(true);
    QTextBrowser& view = *form_->pageText;
    if (place.document.isEmpty()) {
        ShowPlainText(view, PlainText(place.page));
    } else if (isOther) {
        ShowDocument(view, DocumentText(sources_.documents, place.document));
        pictures_->Show(sources_.documents + u'/' + LinkedDocument(place.document, {}));
    }
    ScrollTo(view, place.scroll);
    form_->backButton->setEnabled(!back_.isEmpty());
    form_->forwardButton->setEnabled(!forward_.isEmpty());
}

void AboutBox::Return(QList<Place>& from, QList<Place>& to) {
    if (from.isEmpty()) return;
    to.append(PresentPlace());
    Show(from.takeLast());
}

void AboutBox::FollowLink(const QUrl& link) {
    if (!link.scheme().isEmpty()) {
        sources_.openUrl(link);
        return;
    }
    Leave();
    Place place = PresentPlace();
    if (!link.path().isEmpty()) {
        place.document = LinkedDocument(place.document, link.path());
        place.scroll = 0;
    }
    Show(place);
    if (link.hasFragment()) ScrollToHeading(*form_->pageText, link.fragment());
}

bool AboutBox::TakeFindKey(const QKeyEvent& event) {
    QLineEdit& edit = *form_->findEdit;
    const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (event.matches(QKeySequence::Find)) {
        edit.setFocus(Qt::ShortcutFocusReason);
        edit.selectAll();
    } else if (event.matches(QKeySequence::FindNext) || (enter && edit.hasFocus())) {
        FindOnPage(*form_->pageText, edit.text(), FindStep::Next);
    } else if (event.matches(QKeySequence::FindPrevious)) {
        FindOnPage(*form_->pageText, edit.text(), FindStep::Previous);
    } else {
        return false;
    }
    return true;
}

// The mouse's own buttons for going back and forth.
bool AboutBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::MouseButtonPress) return FrameWindow::eventFilter(watched, event);
    const Qt::MouseButton button = static_cast<QMouseEvent*>(event)->button();
    if (button == Qt::BackButton) GoBack();
    if (button == Qt::ForwardButton) GoForward();
    return button == Qt::BackButton || button == Qt::ForwardButton;
}

void AboutBox::keyPressEvent(QKeyEvent* event) {
    if (!TakeFindKey(*event) && !TakeDialogKey(*this, *event)) FrameWindow::keyPressEvent(event);
}

AboutBox& ShowAboutBox(QWidget& owner, const AboutSources& sources, QPointer<AboutBox>& slot,
                       AboutPage page) {
    // One that was closed may still wait for its deletion.
    if (!slot || !slot->isVisible()) {
        slot = new AboutBox(&owner, sources);
        slot->SetFrameRect(FromQRect(PlaceOver(&owner, slot->size())));
        slot->show();
    }
    slot->ShowPage(page);
    slot->raise();
    slot->activateWindow();
    return *slot;
}

}  // namespace pixelgrove
