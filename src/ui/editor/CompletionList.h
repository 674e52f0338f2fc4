// CompletionList: the list below the caret with what the word there may become. A child of the editor without
// the focus: keys stay the editor's, which hands over those that are meant for the list. Main thread.
#pragma once

#include <QCompleter>
#include <QListView>
#include <QStringListModel>

class QKeyEvent;

namespace pixelgrove {

class CompletionList : public QListView {
    Q_OBJECT

  public:
    explicit CompletionList(QWidget* editor);

    // From now on these, sorted without regard to case.
    void SetWords(const QStringList& words);
    // Shows those that begin so, none of them chosen, beside the caret's place in the editor; hides where
    // there are none.
    void ShowFor(const QString& beginning, const QRect& caret);
    // True when the list used the key, which then is nothing for the text: arrows and pages choose a row,
    // Escape closes. Enter and Tab take the row that was chosen, and without one are not the list's.
    bool TakeKey(const QKeyEvent& key);

  Q_SIGNALS:
    void Chosen(const QString& word);
    // By Escape.
    void Dismissed();
    // A key went to the row of that word, which is as high as the area in the list.
    void Selected(const QString& word, const QRect& area);

  private:
    void Step(int rows);
    void PlaceBeside(const QRect& caret);

    QStringListModel words_;
    QCompleter completer_;
};

}  // namespace pixelgrove
