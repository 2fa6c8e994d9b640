#include "Git/Process/GitInstanceType.h"

#include "Consts.h"

QString GitInstanceType::launchPath() const {
  switch (kind) {
    case Kind::custom: return path;
    case Kind::local: return Consts::Git::localGitPath();
    case Kind::system: return QStringLiteral("/usr/bin/git");
    case Kind::brew: return QStringLiteral("/usr/local/bin/git");
  }
  return {};
}

QString GitInstanceType::printedName() const {
  switch (kind) {
    case Kind::custom: return path;
    case Kind::local: return QStringLiteral("local");
    case Kind::system: return QStringLiteral("system");
    case Kind::brew: return QStringLiteral("brew");
  }
  return {};
}

int GitInstanceType::storedValue() const {
  switch (kind) {
    case Kind::custom: return 2;
    case Kind::local: return 1;
    case Kind::system: return 0;
    case Kind::brew: return 3;
  }
  return 0;
}
