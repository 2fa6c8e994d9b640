#include "Extensions/GitQuotedPath.h"

#include <QByteArray>

#include "Git/Process/TextEncoding.h"

QString GitQuotedPath::unquote(QStringView text) {
  if (text.size() < 2 || text.front() != u'"' || text.back() != u'"') return text.toString();
  // The escapes stand for bytes of the UTF-8 name, so decode only once they are joined.
  const QByteArray inner = text.sliced(1, text.size() - 2).toUtf8();
  QByteArray bytes;
  bytes.reserve(inner.size());
  for (qsizetype i = 0; i < inner.size(); ++i) {
    const char c = inner[i];
    if (c != '\\' || i + 1 >= inner.size()) {
      bytes.append(c);
      continue;
    }
    const char e = inner[++i];
    switch (e) {
      case 'a': bytes.append('\a'); break;
      case 'b': bytes.append('\b'); break;
      case 't': bytes.append('\t'); break;
      case 'n': bytes.append('\n'); break;
      case 'v': bytes.append('\v'); break;
      case 'f': bytes.append('\f'); break;
      case 'r': bytes.append('\r'); break;
      case '"': bytes.append('"'); break;
      case '\\': bytes.append('\\'); break;
      default:
        if (e >= '0' && e <= '3' && i + 2 < inner.size() && inner[i + 1] >= '0' && inner[i + 1] <= '7' &&
            inner[i + 2] >= '0' && inner[i + 2] <= '7') {
          bytes.append(static_cast<char>(((e - '0') << 6) | ((inner[i + 1] - '0') << 3) | (inner[i + 2] - '0')));
          i += 2;
        } else {
          bytes.append('\\');
          bytes.append(e);
        }
    }
  }
  if (auto decoded = decodeString(bytes)) return *decoded;
  return QString::fromUtf8(bytes);
}
