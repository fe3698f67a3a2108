// A real directory server for a test: OpenLDAP's slapd in a folder of its own, ended with the object.
#pragma once

#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "support/temp_folder.h"

namespace zorvel::test {

// Runs a program to its end; its exit status.
inline int RunProgram(const std::vector<std::string>& words,
                      const std::filesystem::path& output = "/dev/null") {
    const pid_t child = fork();
    if (child == 0) {
        std::vector<char*> arguments;
        for (const std::string& word : words)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        if (freopen(output.c_str(), "w", stdout) == nullptr) _exit(126);
        const std::string errors = output == "/dev/null" ? output.string() : output.string() + ".err";
        if (freopen(errors.c_str(), "w", stderr) == nullptr) _exit(126);
        execvp(arguments.front(), arguments.data());
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

struct SlapdSettings {
    std::string access = "access to * by * read\n";  // of the database
    std::string global{};                            // lines ahead of the database
    std::vector<std::string> addresses{};            // further URLs to listen at
};

class Slapd {
  public:
    // Serves the entries of LDIF texts; starts at once. Raises std::runtime_error without slapd.
    explicit Slapd(const std::string& ldif, const SlapdSettings& settings = {})
        : addresses_(settings.addresses) {
        signal(SIGPIPE, SIG_IGN);  // as the programs do
        const std::filesystem::path schema =
            std::filesystem::path(ZORVEL_SOURCE_DIR) / "program/Trees/nds-schema.ldif";
        const std::filesystem::path script = std::filesystem::path(ZORVEL_SOURCE_DIR) / "tools/slapd_schema";
        Need(RunProgram({script, schema}, Path("nds.conf")) == 0, "the schema could not be made");
        folder_.Write("slapd.conf", "include " + Path("nds.conf").string() + "\n" + settings.global +
                                        "modulepath /usr/lib/ldap\nmoduleload back_mdb\n"
                                        "database mdb\nsuffix \"\"\nmaxsize 1073741824\ndbnosync\n"
                                        "rootdn \"cn=admin\"\nrootpw secret\ndirectory " +
                                        Path("db").string() + "\n" + settings.access);
        std::filesystem::create_directory(Path("db"));
        folder_.Write("tree.ldif", ldif);
        Need(RunProgram({"/usr/sbin/slapadd", "-q", "-s", "-f", Path("slapd.conf"), "-l", Path("tree.ldif")},
                        Path("slapadd.log")) == 0,
             "slapadd: " + folder_.Read("slapadd.log.err"));
        Start();
    }
    ~Slapd() { Stop(); }
    Slapd(const Slapd&) = delete;
    Slapd& operator=(const Slapd&) = delete;

    // The URL of its unix socket.
    std::string url() const {
        std::string url = "ldapi://";
        for (const char character : Path("socket").string())
            url += character == '/' ? std::string("%2F") : std::string(1, character);
        return url;
    }
    const TempFolder& folder() const { return folder_; }

    void Start() {
        std::string addresses = url();
        for (const std::string& address : addresses_)
            addresses += ' ' + address;
        process_ = fork();
        if (process_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);  // nor does it outlive a test that dies
            if (freopen(Path("slapd.log").c_str(), "w", stderr) == nullptr) _exit(126);
            if (freopen("/dev/null", "w", stdout) == nullptr) _exit(126);
            execl("/usr/sbin/slapd", "slapd", "-d", "0", "-f", Path("slapd.conf").c_str(), "-h",
                  addresses.c_str(), nullptr);
            _exit(127);
        }
        constexpr int kTries = 500;
        for (int i = 0; i < kTries && !Listens(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        Need(Listens(), "slapd: " + folder_.Read("slapd.log"));
    }
    // Ends it at once, as a machine that is switched off does.
    void Stop() {
        if (process_ <= 0) return;
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        process_ = 0;
        std::filesystem::remove(Path("socket"));
    }

  private:
    static void Need(bool held, const std::string& otherwise) {
        if (!held) throw std::runtime_error(otherwise);
    }
    std::filesystem::path Path(const std::string& name) const { return folder_.path() / name; }
    bool Listens() const {
        const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = Path("socket").string();
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        const bool listens =
            connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        close(descriptor);
        return listens;
    }

    TempFolder folder_;
    std::vector<std::string> addresses_;
    pid_t process_ = 0;
};

}  // namespace zorvel::test
