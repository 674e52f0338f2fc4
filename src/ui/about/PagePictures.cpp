#include "ui/about/PagePictures.h"

#include <QEvent>
#include <QList>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>
#include <algorithm>

namespace pixelgrove {

namespace {

struct PlacedPicture {
    int position;
    QTextImageFormat format;
};

QList<PlacedPicture> PicturesOf(const QTextDocument& document) {
    QList<PlacedPicture> found;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto at = block.begin(); !at.atEnd(); ++at)
            if (const QTextCharFormat format = at.fragment().charFormat(); format.isImageFormat())
                found.append({at.fragment().position(), format.toImageFormat()});
    return found;
}

}  // namespace

PagePictures::PagePictures(QTextBrowser& view) : view_(view) {
    view.viewport()->installEventFilter(this);
}

void PagePictures::Show(const QString& folder) {
    pictures_.clear();
    for (const PlacedPicture& placed : PicturesOf(*view_.document())) {
        const QString name = placed.format.name();
        if (QImage picture(folder + u'/' + name); !picture.isNull()) pictures_.insert(name, picture);
    }
    Fit();
}

// Scaled here, as the view itself would leave out pixels.
void PagePictures::Fit() {
    QTextDocument& document = *view_.document();
    fittedWidth_ = view_.viewport()->width();
    if (pictures_.isEmpty()) return;
    const double room = std::max(fittedWidth_ - 2 * document.documentMargin(), 1.0);
    const double pixels = view_.devicePixelRatioF();
    QTextCursor cursor(&document);
    for (auto& [position, format] : PicturesOf(document)) {
        const auto picture = pictures_.constFind(format.name());
        if (picture == pictures_.constEnd()) continue;
        const double scale = std::min(1.0, room / picture->width());
        const QSizeF size = QSizeF(picture->size()) * scale;
        if (format.width() == size.width()) continue;
        QImage scaled =
            picture->scaled((size * pixels).toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        scaled.setDevicePixelRatio(pixels);
        document.addResource(QTextDocument::ImageResource, QUrl(format.name()), scaled);
        format.setWidth(size.width());
        format.setHeight(size.height());
        cursor.setPosition(position);
        cursor.setPosition(position + 1, QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
    }
}

bool PagePictures::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && view_.viewport()->width() != fittedWidth_) Fit();
    return QObject::eventFilter(watched, event);
}

}  // namespace pixelgrove
