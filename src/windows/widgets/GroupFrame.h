// GroupFrame: the frame of a group of controls on a form, with its caption in the form "[ Caption ]" ten
// pixels in. It lies behind the group's controls and takes no clicks. Main thread.
#pragma once

#include <QWidget>

namespace pixelgrove {

class GroupFrame : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString title READ Title WRITE SetTitle)

  public:
    explicit GroupFrame(QWidget* parent = nullptr);
    const QString& Title() const { return title_; }
    void SetTitle(const QString& title);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString title_;
};

}  // namespace pixelgrove
