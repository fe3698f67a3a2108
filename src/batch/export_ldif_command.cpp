// zorvel-batch export-ldif: a tree as a file, for an audit that can be repeated without its servers.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>

#include "batch/command.h"
#include "batch/field.h"
#include "directory/directory_config.h"
#include "directory/tree_export.h"
#include "platform/code_page.h"
#include "platform/interruption.h"
#include "platform/write_in_place.h"

namespace zorvel {
namespace {

class ExportLdifCommand final : public BatchCommand {
  public:
    CLI::App* Register(CLI::App& program) override {
        CLI::App* command = program.add_subcommand(
            "export-ldif", "Write a tree as an LDIF file that is analysed as the tree is");
        command->add_option("--tree", tree_, "The tree, as `trees` names it")->required();
        command->add_option("--output", output_, "The file to write")->required();
        return command;
    }

    ExitStatus Run(BatchSession& session) override {
        if (!session.Start(FolderUse::kRead)) return kFailed;
        const std::string name = FromUtf8(tree_);
        const DirectoryConfig config = ReadDirectoryConfig(session.files());
        const auto tree =
            std::find_if(config.trees.begin(), config.trees.end(),
                         [&](const DirectoryConfig::Tree& other) { return other.name == name; });
        if (tree == config.trees.end()) return session.Fail("there is no tree '" + name + "'");

        MainController& controller = session.controller();
        LdapPorts ports = controller.MakeLdapPorts();
        ports.wait = [&session] {
            if (session.window().interrupted()) throw Interrupted();
        };
        LdapHost host{session.files(), controller.services().log, ports};
        ExportSummary summary;
        try {
            WriteInPlace(output_, [&](OutputFile& file) { summary = ExportTree(host, *tree, file); });
        } catch (const Interrupted&) {
            return kInterrupted;
        }
        return Tell(session, name, summary);
    }

  private:
    static ExitStatus Tell(BatchSession& session, const std::string& tree, const ExportSummary& summary) {
        session.out() << Field(tree) << '\t' << summary.objects << '\n';
        for (const std::string& application : summary.unreadable) {
            const std::string told =
                "the application '" + application + "' could not be read and is not in the file";
            session.controller().services().log.WriteWarning(told);
            session.Fail(told);
        }
        return summary.unreadable.empty() ? kDone : kFailed;
    }

    std::string tree_;
    std::string output_;
};

}  // namespace

std::unique_ptr<BatchCommand> MakeExportLdifCommand() {
    return std::make_unique<ExportLdifCommand>();
}

}  // namespace zorvel
