#pragma once
// A throwaway signing key in a private GNUPGHOME, for the tests that sign commits.
#include <QFile>
#include <QTemporaryDir>

#include "support/TempRepository.h"

class SigningKey {
 public:
  SigningKey() : previousHome_(qgetenv("GNUPGHOME")) {
    QFile::setPermissions(home_.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("GNUPGHOME", home_.path().toLocal8Bit());
    int status = 0;
    runProgram("gpg",
               {"--batch", "--pinentry-mode", "loopback", "--passphrase", QString(), "--quick-gen-key",
                "Jelv Signer <signer@jelv.invalid>", "ed25519", "sign", "never"},
               {}, &status);
    if (status != 0) return;
    for (const QString& line : QString::fromUtf8(runProgram("gpg", {"--batch", "--list-secret-keys", "--with-colons"})).split(u'\n')) {
      if (line.startsWith("fpr:") && fingerprint.isEmpty()) fingerprint = line.section(u':', 9, 9);
    }
  }
  ~SigningKey() {
    int ignored = 0;
    runProgram("gpgconf", {"--kill", "gpg-agent"}, {}, &ignored);
    if (previousHome_.isEmpty()) qunsetenv("GNUPGHOME");
    else qputenv("GNUPGHOME", previousHome_);
  }

  QString fingerprint;  // empty when no key could be made

 private:
  QTemporaryDir home_{"/tmp/jelv-gpg-XXXXXX"};  // short: the agent's socket path is limited
  QByteArray previousHome_;
};
