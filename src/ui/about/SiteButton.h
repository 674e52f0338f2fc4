// SiteButton: a button with a picture of a site, or an arrow, as large as the button is. Main thread.
#pragma once

#include <QPushButton>

namespace pixelgrove {

enum class SitePicture { None, Book, Glossary, Sandbox, Player, One, Back, Forward };

class SiteButton : public QPushButton {
    Q_OBJECT

  public:
    explicit SiteButton(QWidget* parent = nullptr) : QPushButton(parent) {}
    void SetPicture(SitePicture picture);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    SitePicture picture_ = SitePicture::None;
};

}  // namespace pixelgrove
