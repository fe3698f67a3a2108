// A main window that notes what it is told, and the display of a run.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/run_display.h"
#include "controller/main_window.h"

namespace zorvel::test {

class FakeRunDisplay : public RunDisplay {
  public:
    std::vector<bool> generate_enabled;
    std::string selected_count;
    std::vector<std::string> applications;  // "count name"
    std::vector<double> stream_progress;
    std::vector<double> overall_progress;
    std::string last_overall_time;
    std::vector<std::string> last_counters;
    std::string summary;
    std::string question;
    bool import_answer = false;

    void EnableGenerate(bool enabled) override { generate_enabled.push_back(enabled); }
    void ShowSelectedCount(std::string_view text) override { selected_count = text; }
    void ShowCurrentApplication(std::string_view count, std::string_view name) override {
        applications.push_back(std::string(count) + " " + std::string(name));
    }
    void ShowStatusCounts(const RunStatus& status) override {
        last_overall_time = status.OverallTimeText();
        last_counters.clear();
        for (const std::int32_t count : status.counters.run) {
            last_counters.push_back(RunStatus::CounterText(count));
        }
    }
    void ShowStreamProgress(double value) override { stream_progress.push_back(value); }
    void ShowOverallProgress(double value) override { overall_progress.push_back(value); }
    bool OfferImport(const std::string& new_summary, const std::string& new_question) override {
        summary = new_summary;
        question = new_question;
        return import_answer;
    }
};

class FakeOUViewDisplay : public OUViewDisplay {
  public:
    std::vector<std::pair<std::size_t, bool>> nodes;  // record number, expanded
    std::string cache_tree_title;
    bool cache_tree_open = false;
    std::vector<std::string> ou_texts;
    std::string ou_count;
    std::string app_count;

    void ClearBrowser() override { nodes.clear(); }
    void AddNode(std::size_t ou_number, bool expanded) override { nodes.emplace_back(ou_number, expanded); }
    void ShowCacheTree(std::string_view title) override {
        cache_tree_title = title;
        cache_tree_open = true;
    }
    void SetLabOU(std::string_view text) override { ou_texts.emplace_back(text); }
    void SetLabOUCount(std::string_view text) override { ou_count = text; }
    void SetLabApps(std::string_view text) override { app_count = text; }
    void CloseCacheTree() override { cache_tree_open = false; }
};

class FakeMainWindow final : public MainWindow {
  public:
    std::string caption;
    std::vector<std::string> trees;
    int selected_tree = -1;
    DirectoryAccess directory_access = DirectoryAccess::kFull;
    bool welcome_shown = false;
    bool suppress_welcome = false;
    bool reenable_welcome_enabled = false;
    std::string current_ou;
    std::size_t nodes = 0;
    std::vector<bool> generate_enabled;

    void SetCaption(std::string_view text) override { caption = text; }
    bool ShowWelcome() override {
        welcome_shown = true;
        return suppress_welcome;
    }
    void EnableReenableWelcome(bool enabled) override { reenable_welcome_enabled = enabled; }
    void AddTree(std::string_view name) override { trees.emplace_back(name); }
    void SelectTree(std::size_t index) override { selected_tree = static_cast<int>(index); }
    void AllowDirectory(DirectoryAccess access) override { directory_access = access; }
    void SetCurrentOU(std::string_view text) override { current_ou = text; }
    void EnableGenerate(bool enabled) override { generate_enabled.push_back(enabled); }
    void ClearBrowser() override { nodes = 0; }
    void AddNode(std::size_t /*ou_number*/, bool /*expanded*/) override { ++nodes; }
    bool OfferImport(const std::string& /*summary*/, const std::string& /*question*/) override {
        return false;
    }
};

}  // namespace zorvel::test
