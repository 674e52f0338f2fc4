// How the About box's texts look: documents with headings, tables and links, and plain texts whose addresses
// are links. Main thread.
#pragma once

#include <QString>

class QTextBrowser;

namespace pixelgrove {

// The window's two colours, and narrow tabs.
void SetUpPageView(QTextBrowser& view);

void ShowDocument(QTextBrowser& view, const QString& markdown);
// Letter for letter: whatever stands in it, it is no markup.
void ShowPlainText(QTextBrowser& view, const QString& text);

// Also to where the text has not been laid out yet.
void ScrollTo(QTextBrowser& view, int position);

// Scrolls to the heading that a link in the document names: its words in small letters with '-' between them.
// False without such a heading.
bool ScrollToHeading(QTextBrowser& view, const QString& name);

// Selects the text's next place, in any case, or the one before; beyond the end the search goes on at the
// other. Again: from the place that is selected now on, which stays while the text grows. False when it
// stands nowhere.
enum class FindStep { Again, Next, Previous };
bool FindOnPage(QTextBrowser& view, const QString& text, FindStep step);

}  // namespace pixelgrove
