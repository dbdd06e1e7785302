#include "platform/linux/mail/certificate_verifier.h"

#include <gnutls/gnutls.h>
#include <gnutls/x509.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <type_traits>
#include <vector>
#include <vmime/security/cert/X509Certificate.hpp>
#include <vmime/security/cert/certificateChain.hpp>
#include <vmime/security/cert/certificateException.hpp>
#include <vmime/utility/outputStreamStringAdapter.hpp>

namespace gorbex {
namespace {

constexpr const char* kSystemBundle = "/etc/ssl/certs/ca-certificates.crt";

[[noreturn]] void Refuse(const std::string& reason) {
  throw vmime::security::cert::certificateException(reason);
}

struct Releaser {
  void operator()(gnutls_x509_trust_list_t list) const { gnutls_x509_trust_list_deinit(list, 1); }
  void operator()(gnutls_x509_crt_t certificate) const { gnutls_x509_crt_deinit(certificate); }
};
using TrustList = std::unique_ptr<std::remove_pointer_t<gnutls_x509_trust_list_t>, Releaser>;
using Certificate = std::unique_ptr<std::remove_pointer_t<gnutls_x509_crt_t>, Releaser>;

TrustList SystemTrust() {
  const char* named = std::getenv("SSL_CERT_FILE");
  const std::string bundle = named != nullptr && *named != '\0' ? named : kSystemBundle;
  gnutls_x509_trust_list_t list = nullptr;
  if (gnutls_x509_trust_list_init(&list, 0) < 0) throw std::bad_alloc();
  TrustList trust(list);
  if (gnutls_x509_trust_list_add_trust_file(list, bundle.c_str(), nullptr, GNUTLS_X509_FMT_PEM, 0,
                                            0) <= 0) {
    Refuse("there are no trusted certificates in '" + bundle + "'");
  }
  return trust;
}

Certificate Imported(const vmime::security::cert::certificate& certificate) {
  const auto* x509 = dynamic_cast<const vmime::security::cert::X509Certificate*>(&certificate);
  if (x509 == nullptr) Refuse("it is of an unknown kind");
  vmime::string bytes;
  vmime::utility::outputStreamStringAdapter out(bytes);
  x509->write(out, vmime::security::cert::X509Certificate::FORMAT_DER);
  gnutls_x509_crt_t handle = nullptr;
  if (gnutls_x509_crt_init(&handle) < 0) throw std::bad_alloc();
  Certificate imported(handle);
  const gnutls_datum_t datum{reinterpret_cast<unsigned char*>(bytes.data()),
                             static_cast<unsigned>(bytes.size())};
  if (gnutls_x509_crt_import(handle, &datum, GNUTLS_X509_FMT_DER) < 0) Refuse("it is malformed");
  return imported;
}

std::string WordsOf(unsigned status) {
  gnutls_datum_t words{};
  if (gnutls_certificate_verification_status_print(status, GNUTLS_CRT_X509, &words, 0) < 0) {
    return "it is not trusted";
  }
  std::string text(reinterpret_cast<const char*>(words.data), words.size);
  gnutls_free(words.data);
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace

void CertificateVerifier::verify(vmime::shared_ptr<vmime::security::cert::certificateChain> chain,
                                 const vmime::string& /*hostname*/) {
  std::vector<Certificate> certificates;
  for (std::size_t i = 0; i < chain->getCount(); ++i) {
    certificates.push_back(Imported(*chain->getAt(i)));
  }
  if (certificates.empty()) Refuse("the server shows none");
  std::vector<gnutls_x509_crt_t> handles;
  handles.reserve(certificates.size());
  for (const auto& certificate : certificates) handles.push_back(certificate.get());
  const auto trust = SystemTrust();
  std::string purpose = GNUTLS_KP_TLS_WWW_SERVER;
  std::string host = host_;
  std::array<gnutls_typed_vdata_st, 2> wanted{
      {{GNUTLS_DT_DNS_HOSTNAME, reinterpret_cast<unsigned char*>(host.data()), 0},
       {GNUTLS_DT_KEY_PURPOSE_OID, reinterpret_cast<unsigned char*>(purpose.data()), 0}}};
  unsigned status = 0;
  const int result = gnutls_x509_trust_list_verify_crt2(
      trust.get(), handles.data(), static_cast<unsigned>(handles.size()), wanted.data(),
      wanted.size(), 0, &status, nullptr);
  if (result < 0) Refuse(gnutls_strerror(result));
  if (status != 0) Refuse(WordsOf(status));
}

}  // namespace gorbex
