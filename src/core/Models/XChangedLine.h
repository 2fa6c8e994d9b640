#pragma once
#include <QString>
#include <memory>
#include <vector>

// One line of a hunk: the text behind the first column, with the newline of the diff
// text. A flagged line is the last of its side, and the file has no newline behind it.
struct XChangedLine {
  QString line;
  bool noNewLineAtEndOfFile = false;
};

using XChangedLinePtr = std::shared_ptr<const XChangedLine>;
using XChangedLineList = std::vector<XChangedLinePtr>;
