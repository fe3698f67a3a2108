// A directory that fails as a test asks.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "directory/directory.h"
#include "platform/error.h"

namespace zorvel::test {

struct DirectoryFaults {
    int nw_calls_init = 0;  // what the initialisation calls return; 0 lets them work
    int nw_net_init = 0;
    int create_context_handle = 0;
    bool error_600_everywhere = false;  // every operation but the initialisation calls raises error 600
    std::string lost_object;            // the path of an object whose LookUp raises error 5
};

// Passes every operation on to another directory, unless it is to fail.
class FaultyDirectory final : public Directory {
    using View = std::string_view;
    using Texts = std::vector<std::string>;

  public:
    explicit FaultyDirectory(std::unique_ptr<Directory> inner, const DirectoryFaults& wanted = {})
        : faults(wanted), inner_(std::move(inner)) {
        inner_->on_unreadable = [this] { TellUnreadable(); };
    }

    DirectoryFaults faults;

    int NWCallsInit() override {
        return faults.nw_calls_init != 0 ? faults.nw_calls_init : inner_->NWCallsInit();
    }
    std::string InitialisationFailure() const override { return inner_->InitialisationFailure(); }
    int NWNetInit() override { return faults.nw_net_init != 0 ? faults.nw_net_init : inner_->NWNetInit(); }
    int NWDSCreateContextHandle(std::uint32_t& handle) override {
        const int failure = faults.create_context_handle;
        return failure != 0 ? failure : inner_->NWDSCreateContextHandle(handle);
    }
    int NWGetPreferredConnName(std::string& name) override { return inner_->NWGetPreferredConnName(name); }

    int TreeCount() override { return Inner().TreeCount(); }
    std::string TreeName(int index) override { return Inner().TreeName(index); }
    void SetCurrentObject(View path) override { Inner().SetCurrentObject(path); }
    Entry CurrentEntry() override { return Inner().CurrentEntry(); }
    std::vector<Entry> Entries(View path, View classes) override { return Inner().Entries(path, classes); }
    Entry FindEntry(View path) override { return Inner().FindEntry(path); }
    std::string FullName(View path) override { return Inner().FullName(path); }
    std::string FullNameOf(const Entry& entry) override { return Inner().FullNameOf(entry); }
    std::string TreeNameOf(View path) override { return Inner().TreeNameOf(path); }
    Entry LookUp(View path_or_name) override {
        if (path_or_name == faults.lost_object) throw Error(errors::kInvalidCall);
        return Inner().LookUp(path_or_name);
    }
    ObjectDescription Describe(const Entry& entry) override { return Inner().Describe(entry); }
    Texts AttributeNames(const Entry& entry) override { return Inner().AttributeNames(entry); }
    View AttributeSyntax(const Entry& entry, View name) override {
        return Inner().AttributeSyntax(entry, name);
    }
    Texts AttributeValues(const Entry& entry, View name) override {
        return Inner().AttributeValues(entry, name);
    }
    Texts ReferencedNames(const Entry& entry, View name) override {
        return Inner().ReferencedNames(entry, name);
    }
    int NWDSOpenStream(std::uint32_t context, View name, View attribute, int flags, int& file) override {
        return Inner().NWDSOpenStream(context, name, attribute, flags, file);
    }
    std::size_t GetFileSize(int file) override { return Inner().GetFileSize(file); }
    void ReadFile(int file, std::size_t size, std::string& to) override { Inner().ReadFile(file, size, to); }
    void CloseHandle(int file) override { Inner().CloseHandle(file); }

  private:
    void TellUnreadable() const {
        if (on_unreadable) on_unreadable();
    }
    Directory& Inner() const {
        if (!faults.error_600_everywhere) return *inner_;
        TellUnreadable();
        throw Error(errors::kDirectoryUnreadable).With({});
    }

    std::unique_ptr<Directory> inner_;
};

}  // namespace zorvel::test
