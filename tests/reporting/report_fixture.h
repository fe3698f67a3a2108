// Reports over small datasets of a test's own.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "database/dataset_folder.h"
#include "reporting/page_layout.h"
#include "reporting/report.h"
#include "reporting/report_display.h"

namespace zorvel::test {

// A program folder with the dataset "Zorvel_1.MDB", made from the delivered template.
struct ReportFolder : DatasetFolder {
    ReportFolder() {
        dataset = "Zorvel_1.MDB";
        AddDataset(folder, dataset);
        CatalogueRow row;
        row.Captured = "16/11/2026 17:28:05";
        row.Tree = tree;
        row.OU = "APPS.SITE";
        row.Description = comment;
        row.DBName = dataset;
        catalogue->Add(row);
    }
    // Runs a script over the dataset; its text is of the code page.
    void Fill(const std::string& script) { Open(dataset).ExecuteScript(script); }

    std::shared_ptr<const Report> Make(const std::string& definition, ReportFacts facts = {}) const {
        ReportDefinition parsed = ParseReportDefinition(definition, "test.rpt");
        const std::string query = parsed.query;
        return std::make_shared<const Report>(std::move(parsed), std::move(facts), Open(dataset), query);
    }
};

// Chooses what a test wants, and keeps the report.
class FakeDisplay final : public ReportDisplay {
  public:
    std::function<void(ReportChoice&)> choose;
    AskInterrupted interrupted;
    int asked = 0;
    std::shared_ptr<const Report> report;

    void ShowReportOptions(ReportChoice& choice) override {
        ++asked;
        if (choose) choose(choice);
    }
    bool Interrupted() override { return interrupted && interrupted(); }
    void ShowReport(std::shared_ptr<const Report> shown) override { report = std::move(shown); }
};

// Fonts whose every character is half as wide as it is high.
inline ReportFonts SquareFonts() {
    ReportFonts fonts;
    for (FontFace* face : {&fonts.regular, &fonts.bold}) {
        face->advances.fill(0.5);
        face->ascent = 0.8;
        face->descent = 0.2;
    }
    return fonts;
}

}  // namespace zorvel::test
