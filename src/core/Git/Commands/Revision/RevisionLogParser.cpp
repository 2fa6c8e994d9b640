#include "Git/Commands/Revision/RevisionLogParser.h"

#include "Extensions/DecimalInteger.h"
#include "Git/Process/TextEncoding.h"
#include "Jobs/Cancelable.h"
#include "Logging/AdvancedLogger.h"

namespace {

QString lineText(QByteArrayView line) { return decodeString(line.data(), line.size()).value_or(QString()); }

bool isAscii(QByteArrayView bytes) {
  for (char c : bytes) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

template <typename Consumer>
void splitLines(const QByteArray& output, Consumer&& consume) {
  qsizetype start = 0;
  while (start < output.size()) {
    qsizetype end = output.indexOf('\n', start);
    if (end < 0) end = output.size();
    if (!consume(QByteArrayView(output.constData() + start, end - start))) return;
    start = end + 1;
  }
}

}  // namespace

RevisionLogParser::RevisionLogParser(Format format, const Cancelable* cancelation) : format_(format), cancelation_(cancelation) {
  if (format_ == Format::revisions) {
    revisions_.reserve(1024);
  } else {
    stashes_.reserve(32);
  }
}

bool RevisionLogParser::parseParents(QByteArrayView line, bool firstOnly, std::vector<Sha>& out) {
  out.clear();
  if (line.isEmpty()) return true;
  if (line.size() == Sha::hexLength) {
    const auto sha = Sha::fromHex(line);
    if (!sha) return false;
    out.push_back(*sha);
    return true;
  }
  qsizetype start = 0;
  while (start <= line.size()) {
    qsizetype end = line.indexOf(' ', start);
    if (end < 0) end = line.size();
    if (end > start) {
      const auto sha = Sha::fromHex(line.sliced(start, end - start));
      if (!sha) return false;
      out.push_back(*sha);
      if (firstOnly) return true;
    }
    start = end + 1;
  }
  return true;
}

CompactText RevisionLogParser::subjectText(QByteArrayView line) {
  if (isAscii(line)) return CompactText(line);
  return CompactText::fromText(lineText(line));
}

std::optional<ResultError> RevisionLogParser::consume(QByteArrayView line) {
  const int lastPart = format_ == Format::revisions ? 6 : 7;
  switch (part_) {
    case 0: {
      // Testing the progress takes its lock, so only once every 50 revisions.
      if (format_ == Format::revisions && cancelation_ && revisions_.size() % 50 == 0 && cancelation_->isCanceled()) {
        return Error::Canceled{};
      }
      recordIsValid_ = true;
      if (const auto sha = Sha::fromHex(line)) {
        sha_ = *sha;
      } else {
        rejectRecord(line);
      }
      break;
    }
    case 1: {
      if (const auto tree = Sha::fromHex(line)) {
        tree_ = *tree;
      } else {
        rejectRecord(line);
      }
      break;
    }
    case 2:
      if (!parseParents(line, format_ == Format::stashes, parents_)) rejectRecord(line);
      break;
    case 3:
      authorName_.resize(0);
      authorName_.append(line.data(), line.size());
      break;
    case 4:
      authorEmail_.resize(0);
      authorEmail_.append(line.data(), line.size());
      break;
    case 5: {
      const auto seconds = DecimalInteger::parse(line);
      if (!seconds) return Error::CannotParse{QStringLiteral("Cannot parse author date in '%1'").arg(lineText(line))};
      authorTime_ = *seconds;
      break;
    }
    case 6:
      if (format_ == Format::revisions) return appendRecord(line);
      reflogName_ = lineText(line);
      break;
    case 7:
      if (format_ == Format::stashes) return appendRecord(line);
      [[fallthrough]];
    default: return Error::CannotReachHere{QStringLiteral("Invalid part number: '%1'").arg(part_)};
  }
  part_ = part_ == lastPart ? 0 : part_ + 1;
  return std::nullopt;
}

void RevisionLogParser::rejectRecord(QByteArrayView line) {
  // Object names are kept as binary, so one that isn't hex can't be kept at all; the
  // record is dropped and the records around it stand.
  if (recordIsValid_) LOG_ERROR(QStringLiteral("Cannot parse revision line '%1'").arg(lineText(line)));
  recordIsValid_ = false;
}

std::optional<ResultError> RevisionLogParser::appendRecord(QByteArrayView subject) {
  part_ = 0;
  if (!recordIsValid_) return std::nullopt;
  auto author = interner_.intern(QByteArrayView(authorName_), QByteArrayView(authorEmail_));
  if (format_ == Format::revisions) {
    revisions_.push_back(std::make_shared<const Revision>(sha_, tree_, ParentShas(std::span<const Sha>(parents_)),
                                                          subjectText(subject), std::move(author), authorTime_));
    return std::nullopt;
  }
  // An entry without a parent can't be placed on the graph; it is skipped.
  if (parents_.empty()) return std::nullopt;
  stashes_.push_back(std::make_shared<const StashRevision>(sha_, tree_, ParentShas(parents_.front()), subjectText(subject),
                                                           std::move(author), authorTime_, reflogName_));
  return std::nullopt;
}

void RevisionLogParser::finish() {
  const int lastPart = format_ == Format::revisions ? 6 : 7;
  if (part_ == lastPart) appendRecord({});
  part_ = 0;
}

RevisionList RevisionLogParser::takeRevisions() {
  revisions_.shrink_to_fit();
  return std::move(revisions_);
}

StashRevisionList RevisionLogParser::takeStashes() { return std::move(stashes_); }

GitResult<RevisionList> RevisionLogParser::parseRevisions(const QByteArray& output) {
  RevisionLogParser parser(Format::revisions);
  std::optional<ResultError> failure;
  splitLines(output, [&](QByteArrayView line) { return !(failure = parser.consume(line)); });
  if (failure) return *failure;
  parser.finish();
  return parser.takeRevisions();
}

GitResult<StashRevisionList> RevisionLogParser::parseStashes(const QByteArray& output) {
  RevisionLogParser parser(Format::stashes);
  std::optional<ResultError> failure;
  splitLines(output, [&](QByteArrayView line) { return !(failure = parser.consume(line)); });
  if (failure) return *failure;
  parser.finish();
  return parser.takeStashes();
}
