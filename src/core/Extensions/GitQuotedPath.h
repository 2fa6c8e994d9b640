#pragma once
// git prints a path that holds a quote, a backslash, a control character or (with
// core.quotepath on, the default) any byte above 0x7f in C style: "\"\\303\\244 b.txt\"".
#include <QString>
#include <QStringView>

namespace GitQuotedPath {

// The path as it is on disk; text without the surrounding quotes stands as it is.
QString unquote(QStringView text);

}  // namespace GitQuotedPath
