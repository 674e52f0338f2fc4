#include "ui/ProjectDrops.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include "library/PageAddress.h"
#include "ui/ProjectCommands.h"
#include "windows/widgets/DroppedFiles.h"

namespace pixelgrove {

namespace {

// The shader whose page is dropped; empty when it is none.
QString DroppedShader(const QMimeData& data, const ServiceAddress& service) {
    for (const QUrl& url : data.urls())
        if (const QString id = ShaderIdOfPage(service, url); !id.isEmpty()) return id;
    return {};
}

// Text of another program, copied: nothing is to vanish there, and nothing that is dragged in a text of ours
// is a project.
bool IsTextFromOutside(const QDropEvent& drop) {
    return drop.mimeData()->hasText() && !drop.source() && drop.possibleActions().testFlag(Qt::CopyAction);
}

}  // namespace

ProjectDrops::ProjectDrops(QWidget& window, QWidget& textView, ProjectCommands& projects)
    : window_(window), projects_(projects) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
    textView.installEventFilter(this);
}

bool ProjectDrops::IsLoadable(const QMimeData& data) const {
    return !DroppedFiles(data).isEmpty() || !DroppedShader(data, projects_.service).isEmpty();
}

bool ProjectDrops::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) return false;
    auto& drop = *static_cast<QDropEvent*>(event);
    if (!IsLoadable(*drop.mimeData()) && (watched != &window_ || !IsTextFromOutside(drop))) return false;
    AcceptAsCopy(drop);
    if (type == QEvent::Drop) Load(*drop.mimeData());
    return true;
}

// The program that it comes from waits for the event to end; a question may take long.
void ProjectDrops::Load(const QMimeData& data) {
    const auto later = [this](auto load) { QMetaObject::invokeMethod(&window_, load, Qt::QueuedConnection); };
    if (const QStringList paths = DroppedFiles(data); !paths.isEmpty())
        later([this, paths] { projects_.DropFiles(paths); });
    else if (const QString shader = DroppedShader(data, projects_.service); !shader.isEmpty())
        later([this, shader] { projects_.DropShader(shader); });
    else
        later([this, text = data.text()] { projects_.TakeText(text, QStringLiteral("dropped text")); });
}

}  // namespace pixelgrove
