// The browser's searches: each runs on the worker with a context of its own, which becomes the window's at
// its end.
#include <utility>

#include "library/ShaderService.h"
#include "library/widgets/BrowserWindow.h"
#include "ui_ShadertoyBrowse.h"

namespace pixelgrove {

struct BrowserWindow::SearchRun {
    struct Stand {
        double fraction = 0;
        uint32_t done = 0;
        uint32_t total = 0;
    };
    SearchContext context;           // the worker's until the job is done
    bool isShown = false;            // the same
    bool isLocal = false;            // fixed before it begins
    SynchronizedValue<Stand> stand;  // written by the worker, for the window
};

void BrowserWindow::Search() {
    LeaveWork();
    const bool isLocal = form_->offlineCheck->isChecked();
    const auto run = std::make_shared<SearchRun>();
    run->context = NewSearch(form_->searchCombo->currentText(), isLocal);
    run->isLocal = isLocal;
    search_ = run;
    context_ = NewSearch(QString(), isLocal);
    ShowPage();
    Client()->setCursor(Qt::WaitCursor);
    ShowSearch(*run);

    WebJob job;
    job.work = [run, address = service_](const WebTask& task) {
        const auto progress = [&](float fraction) {
            if (fraction <= 1) {
                run->stand.Exchange({fraction, run->context.done, run->context.total});
                task.tell();
            }
            return !task.stop.stop_requested();
        };
        run->isShown = RunSearch(run->context, {address, task.fetch}, progress, task.stop);
    };
    job.told = [this, run] {
        if (search_ == run) ShowSearch(*run);
    };
    job.done = [this, run] {
        if (search_ == run) return EndSearch(*run);
        WantDetails();  // of what is shown in its place
    };
    worker_.Start(std::move(job));
}

void BrowserWindow::ShowSearch(const SearchRun& run) {
    const SearchRun::Stand stand = run.stand.Copy();
    form_->statusLine->ShowProgress(
        stand.fraction, QStringLiteral("Searching %1 %2/%3... ESC to abort.")
                            .arg(run.isLocal ? QStringLiteral("local cache") : QStringLiteral("ShaderToy"))
                            .arg(stand.done)
                            .arg(stand.total));
}

void BrowserWindow::EndSearch(SearchRun& run) {
    search_.reset();
    Client()->unsetCursor();
    context_ = std::move(run.context);
    switch (context_.error) {
        case SearchError::NoAnswer:
            Say(QStringLiteral("Failed to connect to Shadertoy."));
            break;
        case SearchError::NoJson:
            Say(QStringLiteral("Invalid data returned from Shadertoy."));
            break;
        case SearchError::None: {
            const QString found = QStringLiteral("found %1 results.").arg(context_.results.size());
            Say(context_.local ? QStringLiteral("Searched %1 files and ").arg(context_.total) + found
                               : QStringLiteral("Searched Shadertoy and ") + found);
            break;
        }
    }
    if (!context_.problem.isEmpty())
        roads_.say(QStringLiteral("The search has failed: %1.").arg(context_.problem));
    if (run.isShown) ShowPage();
}

// An answer of the service is waited for.
void BrowserWindow::StopScan() {
    if (search_ && search_->isLocal) worker_.Stop();
    if (sortsLater_) {
        sortsLater_ = false;
        details_.Want({});
    }
}

void BrowserWindow::LeaveWork() {
    details_.Stop();
    if (!std::exchange(search_, nullptr)) return;
    worker_.Stop();
    Client()->unsetCursor();
}

}  // namespace pixelgrove
