// What is dragged over a widget and dropped there. On the main thread, with a display.
#pragma once

#include <QCoreApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace pixelgrove::test {

// What becomes of it, once the widget has seen to it; nothing where it isn't taken.
inline Qt::DropAction Drop(QWidget* target, const QMimeData& data,
                           Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction) {
    const QPoint at = target->rect().center();
    QDragEnterEvent enter(at, offered, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    if (!enter.isAccepted()) return Qt::IgnoreAction;
    QDropEvent drop(at, offered, &data, Qt::LeftButton, Qt::NoModifier);
    drop.setDropAction(Qt::MoveAction);  // as the source may propose
    QCoreApplication::sendEvent(target, &drop);
    QCoreApplication::sendPostedEvents();
    return drop.dropAction();
}

inline Qt::DropAction DropFiles(QWidget* target, const QStringList& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls.append(QUrl::fromLocalFile(path));
    data.setUrls(urls);
    return Drop(target, data);
}

}  // namespace pixelgrove::test
