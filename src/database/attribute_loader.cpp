#include "database/attribute_loader.h"

#include <optional>
#include <string_view>
#include <utility>

#include "database/application_keys.h"
#include "database/flag_decoder.h"
#include "database/sql_text.h"
#include "platform/code_page.h"
#include "streams/text_helpers.h"

namespace zorvel {
namespace {

constexpr std::size_t kCaptionLength = 100;
// Flags come in few combinations, each with a statement of its own; this many are kept ready.
constexpr std::size_t kUpdatesKept = 256;

constexpr std::array<ValueRule, 2> kDetailRules = {
    {{ValueForm::kAsIs, kUncut, "the attribute name"}, {ValueForm::kEscaped}}};

// What an attribute sets in its application's row.
struct Assignment {
    std::string list;                  // "Column=?3", or columns and their values; empty sets nothing
    std::optional<std::string> value;  // of ?3
    bool whole = true;                 // false when a value does not stay within its literal in `list`
};

Assignment SetCaption(const std::string& value) {
    return {"AppCaption=?3", std::string(CutEscaped(value, kCaptionLength))};
}

Assignment SetIconOrder(const std::string& value) {
    std::optional<std::string> literal = LiteralValue(value);
    if (!literal) return {"AppIconOrder='" + value + "'", std::nullopt, false};
    return {"AppIconOrder=?3", std::move(literal)};
}

Assignment SetFlags(const std::string& value) {
    return {ParseAppFlags(value), std::nullopt};
}

Assignment SetDefaultAssociationFlags(const std::string& value) {
    return {ParseDAFlags(value), std::nullopt};
}

// The attributes that are columns of the application's row; every other is a row of its own.
struct ColumnAttribute {
    std::string_view name;
    Assignment (*assign)(const std::string& value);
};
constexpr std::array<ColumnAttribute, 4> kColumnAttributes = {{
    {"APP:CAPTION", SetCaption},
    {"APP:ICON ORDER", SetIconOrder},
    {"APP:FLAGS", SetFlags},
    {"APP:DEFAULT ASSOCIATION FLAGS", SetDefaultAssociationFlags},
}};

const ColumnAttribute* FindColumnAttribute(std::string_view name) {
    for (const ColumnAttribute& attribute : kColumnAttributes) {
        if (EqualIgnoringCase(name, attribute.name)) return &attribute;
    }
    return nullptr;
}

}  // namespace

AttributeLoader::AttributeLoader(const Database& dataset)
    : dataset_(dataset),
      keys_(dataset),
      find_(dataset.Prepare("SELECT AppUniqueRef FROM Zorvel_Apps WHERE AppName=?1 AND AppOU=?2")),
      insert_(dataset.Prepare("INSERT INTO Zorvel_Apps (AppUniqueRef,AppName,AppOU,AppCaption,AppIconOrder) "
                              "VALUES (?1,?2,?3,'',0)")),
      insert_detail_(dataset, "INSERT INTO Zorvel_AppDetails (AppUniqueRef,Attribute,Data) VALUES (",
                     kDetailRules) {}

void AttributeLoader::EnterApplication(const std::string& full_name) {
    row_ = ApplicationRow(full_name);
    std::optional<std::string> key = find_.FirstField(row_);
    if (!key) {
        key = keys_.Next();
        insert_.Execute(std::array<std::string, 3>{*key, row_[0], row_[1]});
    }
    key_ = std::move(*key);
    full_name_ = full_name;
}

Command& AttributeLoader::UpdateOf(const std::string& assignments) {
    if (const auto found = updates_.find(assignments); found != updates_.end()) return found->second;
    if (updates_.size() >= kUpdatesKept) updates_.clear();
    Command update =
        dataset_.Prepare("UPDATE Zorvel_Apps SET " + assignments + " WHERE AppName=?1 AND AppOU=?2");
    return updates_.emplace(assignments, std::move(update)).first->second;
}

void AttributeLoader::Add(const std::vector<std::string>& record) {
    if (key_.empty() || record[0] != full_name_) EnterApplication(record[0]);
    const ColumnAttribute* column = FindColumnAttribute(record[1]);
    if (column == nullptr) {
        insert_detail_.Insert(key_, record);
        return;
    }
    Assignment set = column->assign(record[2]);
    if (!set.whole) {
        RejectStatement(dataset_,
                        "UPDATE Zorvel_Apps SET " + set.list + " WHERE AppName='" + EscapeQuotes(row_[0]) +
                            "' AND AppOU='" + EscapeQuotes(row_[1]) + '\'',
                        "the value of '" + record[1] + '\'', record[2]);
    }
    if (set.list.empty()) return;
    std::vector<std::string> values(row_.begin(), row_.end());
    if (set.value) values.push_back(std::move(*set.value));
    UpdateOf(set.list).Execute(values);
}

}  // namespace zorvel
