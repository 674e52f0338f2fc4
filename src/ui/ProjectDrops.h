// ProjectDrops: what is dropped on the main window: files, the address of a shader's page, and text that
// holds a project.
//
// Main thread; owned by the main window.
#pragma once

#include <QObject>

class QDropEvent;
class QMimeData;
class QWidget;

namespace pixelgrove {

class ProjectCommands;

class ProjectDrops : public QObject {
  public:
    // The window takes everything. Of what comes to the text view, files and addresses are for the window,
    // also where the view would take their names; other text is for the view. What is handed in outlives this
    // object.
    ProjectDrops(QWidget& window, QWidget& textView, ProjectCommands& projects);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool IsLoadable(const QMimeData& data) const;
    void Load(const QMimeData& data);

    QWidget& window_;
    ProjectCommands& projects_;
};

}  // namespace pixelgrove
