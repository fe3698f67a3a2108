// sample_tree: writes a made-up directory tree as an LDIF export. docs/sample-trees.md tells how the trees
// that ship with the program were made.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>

#include "platform/error.h"
#include "platform/output_file.h"
#include "sample_tree_writer.h"

int main(int argument_count, char** arguments) {
    CLI::App program("Writes a made-up directory tree as an LDIF export", "sample_tree");
    zorvel::tools::SampleTreeOptions options;
    std::string output;
    program.add_option("--output", output, "The file to write")->required();
    program.add_option("--tree", options.tree, "The tree's name")->capture_default_str();
    program.add_option("--seed", options.seed, "Another seed, another tree")->capture_default_str();
    program.add_option("--containers", options.containers, "Containers")
        ->capture_default_str()
        ->check(CLI::Range(1, 100'000'000));
    program.add_option("--applications", options.applications, "Applications")->capture_default_str();
    program.add_option("--entries", options.entries, "Stream entries of an application, on average")
        ->capture_default_str();
    program.add_flag("!--no-addresses", options.addresses,
                     "Entries hold no addresses of machines or web pages");
    try {
        program.parse(argument_count, arguments);
        zorvel::OutputFile file(output, output, zorvel::OutputFile::Mode::kTruncate);
        zorvel::tools::WriteSampleTree(options, file);
        file.Close();
        return 0;
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? 0 : 2;
    } catch (...) {
        const zorvel::Error error = zorvel::CurrentError();
        std::fprintf(stderr, "sample_tree: %s (%s)\n", error.what(), error.detail().c_str());
        return 1;
    }
}
