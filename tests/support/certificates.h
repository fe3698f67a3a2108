// An authority of a test's own, and the certificates that it signs.
#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/slapd.h"
#include "support/slow_proxy.h"

namespace zorvel::test {

// Makes a key and a certificate that `ca` signs; valid for `days` from now on.
class Certificates {
  public:
    explicit Certificates(const TempFolder& folder) : folder_(folder.path()) {
        Openssl({"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                 "-keyout", Path("ca.key"), "-out", Path("ca.pem"), "-subj", "/CN=Test authority", "-days",
                 "2"});
    }
    std::string Path(const std::string& name) const { return folder_ / name; }

    // The lines of slapd's configuration that use a certificate for `host`.
    std::string ServerLines(const std::string& name, const std::string& host, const std::string& days) const {
        Openssl({"req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-keyout",
                 Path(name + ".key"), "-out", Path(name + ".csr"), "-subj", "/CN=server"});
        std::ofstream(Path(name + ".ext")) << "subjectAltName=" << host << "\n";
        Openssl({"x509", "-req", "-in", Path(name + ".csr"), "-CA", Path("ca.pem"), "-CAkey", Path("ca.key"),
                 "-CAcreateserial", "-out", Path(name + ".pem"), "-days", days, "-extfile",
                 Path(name + ".ext")});
        return "TLSCertificateFile " + Path(name + ".pem") + "\nTLSCertificateKeyFile " +
               Path(name + ".key") + "\n";
    }

  private:
    void Openssl(std::vector<std::string> words) const {
        words.insert(words.begin(), "openssl");
        if (RunProgram(words, folder_ / "openssl.log") != 0) throw std::runtime_error("openssl failed");
    }

    std::filesystem::path folder_;
};

// A port of 127.0.0.1 that nothing listens at.
inline int FreePort() {
    const SlowProxy proxy("");
    return std::stoi(proxy.url().substr(proxy.url().rfind(':') + 1));
}

}  // namespace zorvel::test
