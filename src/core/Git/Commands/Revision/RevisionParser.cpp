#include "Git/Commands/Revision/RevisionParser.h"

#include "Extensions/DecimalInteger.h"
#include "Extensions/GitQuotedPath.h"
#include "Git/Commands/Revision/RevisionLogParser.h"
#include "Logging/AdvancedLogger.h"

namespace {
constexpr qsizetype kRecordLines = 7;
}

RevisionPtr RevisionParser::parseRevision(const QStringList& lines, qsizetype& index) {
  if (index < 0 || index + kRecordLines > lines.size()) {
    // A truncated record at the end: nothing more to read.
    index = lines.size();
    return nullptr;
  }
  const qsizetype start = index;
  index += kRecordLines;
  const QString& shaLine = lines.at(start);
  const QString& treeLine = lines.at(start + 1);
  const QByteArray parentsLine = lines.at(start + 2).toLatin1();
  const QString& timeLine = lines.at(start + 5);

  const auto sha = Sha::fromHex(QStringView(shaLine));
  const auto tree = Sha::fromHex(QStringView(treeLine));
  std::vector<Sha> parents;
  if (!sha || !tree || !RevisionLogParser::parseParents(QByteArrayView(parentsLine), false, parents)) {
    LOG_WARNING(QStringLiteral("Cannot parse revision '%1'").arg(shaLine));
    return nullptr;
  }
  const auto seconds = DecimalInteger::parse(QStringView(timeLine));
  if (!seconds) {
    LOG_WARNING(QStringLiteral("Cannot parse author date in '%1'").arg(timeLine));
    return nullptr;
  }
  return std::make_shared<const Revision>(*sha, *tree, ParentShas(std::span<const Sha>(parents)),
                                          CompactText::fromText(lines.at(start + 6)),
                                          interner_.intern(lines.at(start + 3), lines.at(start + 4)), *seconds);
}

ChangedFilePtr RevisionParser::readChangedFile(const QString& line) {
  const QStringList parts = line.split(QLatin1Char('\t'));
  if (parts.size() < 2) {
    LOG_ERROR(QStringLiteral("Cannot parse filepath in '%1'").arg(line));
    return nullptr;
  }
  auto file = std::make_shared<ChangedFile>();
  const QString& status = parts.at(0);
  file->changeType = status.isEmpty() ? ChangeType::unknown : changeTypeFromStatusLetter(status.at(0));
  if (parts.size() == 3) {
    // Renames and copies: "R100\told\tnew".
    file->oldPath = GitQuotedPath::unquote(parts.at(1));
    file->path = GitQuotedPath::unquote(parts.at(2));
  } else {
    // A name with a quote, a backslash or a control character comes C-quoted even with
    // core.quotePath off.
    file->path = GitQuotedPath::unquote(parts.at(1));
  }
  return file;
}
