// Loaded before GnuTLS into a program under test, by LD_PRELOAD. The program then trusts the
// authority of the test and no other, and knows nothing of it; the machine's list stays as it is.

#include <gnutls/x509.h>

#include <cstdlib>

/// Stands in for GnuTLS' own function: instead of the system's list it reads the file that
/// ORVU_TEST_AUTHORITY names. Gives the number of authorities, or a negative error.
extern "C" int gnutls_x509_trust_list_add_system_trust(gnutls_x509_trust_list_t list,
                                                       unsigned flags, unsigned verifyFlags) {
    const char* file = std::getenv("ORVU_TEST_AUTHORITY");
    if (!file) return GNUTLS_E_FILE_ERROR;
    return gnutls_x509_trust_list_add_trust_file(list, file, nullptr, GNUTLS_X509_FMT_PEM, flags,
                                                 verifyFlags);
}
