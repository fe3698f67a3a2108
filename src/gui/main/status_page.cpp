#include "gui/main/status_page.h"

#include <QLabel>
#include <cstddef>

#include "gui/widgets/qt_text.h"
#include "ui_status_page.h"

namespace zorvel {

StatusPage::StatusPage(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::StatusPage>()), updates_([this] { ShowState(); }) {
    ui_->setupUi(this);
    application_counts_ = {ui_->labApplicationCount_0, ui_->labApplicationCount_1,
                           ui_->labApplicationCount_2, ui_->labApplicationCount_3,
                           ui_->labApplicationCount_4, ui_->labApplicationCount_5};
    run_counts_ = {ui_->labRunCount_0, ui_->labRunCount_1, ui_->labRunCount_2,
                   ui_->labRunCount_3, ui_->labRunCount_4, ui_->labRunCount_5};
    LayOut();
}

StatusPage::~StatusPage() = default;

void StatusPage::LayOut() {
    updates_.Cancel();
    status_.reset();
    const QString dash = QStringLiteral("-");
    for (std::size_t i = 0; i < kCounterCount; ++i) {
        application_counts_[i]->setText(dash);
        run_counts_[i]->setText(dash);
    }
    for (QLabel* label : {ui_->labSelected, ui_->labCurrentCount, ui_->labApplicationTime, ui_->labRunTime}) {
        label->setText(dash);
    }
    ui_->labCurrentName->clear();
    stream_progress_ = 0;
    overall_progress_ = 0;
    ShowState();
}

void StatusPage::ShowSelectedCount(std::string_view text) {
    ui_->labSelected->setText(ToQString(text));
}

void StatusPage::ShowCurrentApplication(std::string_view count, std::string_view name) {
    ui_->labCurrentCount->setText(ToQString(count));
    ui_->labCurrentName->setText(ToQString(name));
    ui_->labCurrentCount->repaint();
    ui_->labCurrentName->repaint();
}

void StatusPage::ShowStatusCounts(const RunStatus& status) {
    status_.emplace(status);
    updates_.Request();
}

void StatusPage::ShowState() {
    ui_->barStream->setValue(stream_progress_);
    ui_->barOverall->setValue(overall_progress_);
    if (!status_) return;
    for (std::size_t i = 0; i < kCounterCount; ++i) {
        application_counts_[i]->setText(ToQString(RunStatus::CounterText(status_->counters.application[i])));
        run_counts_[i]->setText(ToQString(RunStatus::CounterText(status_->counters.run[i])));
    }
    ui_->labApplicationTime->setText(ToQString(status_->ApplicationTimeText()));
    ui_->labRunTime->setText(ToQString(status_->OverallTimeText()));
    status_.reset();
}

void StatusPage::ShowStreamProgress(double value) {
    stream_progress_ = static_cast<int>(value);
    updates_.Request();
}

void StatusPage::ShowOverallProgress(double value) {
    overall_progress_ = static_cast<int>(value);
    updates_.Request();
}

void StatusPage::Flush() {
    updates_.Flush();
}

}  // namespace zorvel
