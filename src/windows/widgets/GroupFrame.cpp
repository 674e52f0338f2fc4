#include "windows/widgets/GroupFrame.h"

#include <QPainter>
#include <algorithm>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kCaptionLeft = 10;
constexpr int kGap = 3;  // between the caption and the line

}  // namespace

GroupFrame::GroupFrame(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    lower();
}

void GroupFrame::SetTitle(const QString& title) {
    title_ = title;
    update();
}

void GroupFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(isEnabled() ? Theme().text : Theme().faintText);
    const QFontMetrics metrics(font());
    const QString caption = title_.isEmpty() ? QString() : QStringLiteral("[ %1 ]").arg(title_);
    const int captionHeight = caption.isEmpty() ? 0 : metrics.height();
    const int room = std::max(0, width() - 2 * kCaptionLeft);
    const QString shown = metrics.elidedText(caption, Qt::ElideRight, room);
    const QRect text(kCaptionLeft, 0, metrics.horizontalAdvance(shown), captionHeight);
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, shown);

    // The upper line runs through the middle of the caption and leaves it free.
    if (!shown.isEmpty()) painter.setClipRegion(QRegion(rect()) - QRegion(text.adjusted(-kGap, 0, kGap, 0)));
    const int top = captionHeight / 2;
    painter.drawRect(0, top, width() - 1, height() - top - 1);
}

}  // namespace pixelgrove
