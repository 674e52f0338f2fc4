#include "ui/MessagePane.h"

#include <QPlainTextEdit>

namespace pixelgrove {

void MessagePane::Say(const QString& text) {
    view_.setPlainText(text);
}

void MessagePane::Add(const QString& text) {
    if (!text.isEmpty()) view_.appendPlainText(text);
}

QString MessagePane::Text() const {
    return view_.toPlainText();
}

}  // namespace pixelgrove
