#pragma once
#include "support/TempRepository.h"

// A straight history of `count` commits on main made in one fast-import: commit i says
// "<prefix>i" and has author time 1600000000 + i.
inline void importLinearHistory(TempRepository& repo, int count, const QByteArray& prefix) {
  QByteArray script;
  for (int i = 1; i <= count; ++i) {
    const QByteArray n = QByteArray::number(i), message = prefix + n;
    script += "commit refs/heads/main\nmark :" + n + "\nauthor A <a@x> " + QByteArray::number(1600000000 + i) +
              " +0000\ncommitter C <c@x> 1600000000 +0000\ndata " + QByteArray::number(message.size()) + "\n" + message + "\n";
    if (i > 1) script += "from :" + QByteArray::number(i - 1) + "\n";
  }
  repo.gitBytes({"fast-import", "--quiet"}, script);
}
