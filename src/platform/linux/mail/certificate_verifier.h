#pragma once

#include <string>
#include <vmime/security/cert/certificateVerifier.hpp>

namespace gorbex {

/// Accepts a server's certificate when an authority of this machine vouches for it, whole chain
/// and purpose included, and it names the host that was asked for. The mail library's own verifier
/// compares the names in a chain without its signatures.
class CertificateVerifier : public vmime::security::cert::certificateVerifier {
 public:
  explicit CertificateVerifier(std::string host) : host_(std::move(host)) {}

  /// Throws the mail library's certificate error with the reason. What the connection takes for the
  /// host's name plays no part: it may come from the network.
  void verify(vmime::shared_ptr<vmime::security::cert::certificateChain> chain,
              const vmime::string& hostname) override;

 private:
  std::string host_;
};

}  // namespace gorbex
