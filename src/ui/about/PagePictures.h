// PagePictures: the pictures of a document in a text view, each in its own size or as wide as the text,
// whichever is less, and scaled well at any size and device pixel ratio.
//
// Owned by the window with the view, which outlives it. Main thread.
#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QString>

class QTextBrowser;

namespace pixelgrove {

class PagePictures : public QObject {
  public:
    explicit PagePictures(QTextBrowser& view);

    // Reads the pictures that the present document names by their paths in the folder. One that can't be read
    // stays as the view shows such.
    void Show(const QString& folder);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Fit();

    QTextBrowser& view_;
    QHash<QString, QImage> pictures_;  // by the document's names
    int fittedWidth_ = 0;
};

}  // namespace pixelgrove
