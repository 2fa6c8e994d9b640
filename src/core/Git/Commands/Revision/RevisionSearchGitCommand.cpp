#include "Git/Commands/Revision/RevisionSearchGitCommand.h"

#include "Git/Process/GitRequest.h"
#include "Jobs/JobProgress.h"
#include "Logging/AdvancedLogger.h"

namespace {
constexpr qsizetype kFieldCount = 7;

bool listsFiles(RevisionSearchType type) { return type == RevisionSearchType::diffContent || type == RevisionSearchType::diffPath; }
}  // namespace

QStringList RevisionSearchGitCommand::arguments(const RevisionSearchQuery& query) {
  QStringList args = {QStringLiteral("log"), QStringLiteral("--no-show-signature"), QStringLiteral("--max-count=%1").arg(maxCount),
                      QStringLiteral("--pretty=format:%H\u00b1.%T\u00b1.%P\u00b1.%aN\u00b1.%aE\u00b1.%at\u00b1.%s")};
  switch (query.type) {
    case RevisionSearchType::message:
      args << QStringLiteral("--grep=") + query.searchString << QStringLiteral("--regexp-ignore-case");
      break;
    case RevisionSearchType::author:
      args << QStringLiteral("--author=") + query.searchString << QStringLiteral("--regexp-ignore-case");
      break;
    case RevisionSearchType::diffContent:
      args << QStringLiteral("--name-status") << QStringLiteral("-S") << query.searchString;
      break;
    case RevisionSearchType::diffPath:
      args << QStringLiteral("--name-status");
      break;
  }
  if (query.scope == RevisionSearchScope::repository) args << QStringLiteral("--all");
  args << QStringLiteral("--");
  if (query.type == RevisionSearchType::diffPath) args << QStringLiteral(":(icase)") + query.searchString;
  return args;
}

GitVoidResult RevisionSearchGitCommand::execute(const GitModule& module, const RevisionSearchQuery& query,
                                                const MatchCallback& matchCallback, JobProgress* progress) {
  LineParser parser(listsFiles(query.type), matchCallback);
  const GitResponse response = GitRequest(module, arguments(query))
                                   .executeWithHandlers(
                                       [&](const QString& line) {
                                         if (progress && progress->isCanceled()) return;
                                         parser.feed(line);
                                       },
                                       [](const QString& line) { LOG_WARNING(line); }, progress);
  if (progress && progress->isCanceled()) return Error::Canceled{};
  parser.finish();
  if (!response.isSuccess()) return failureResult<Unit>(response);
  return Unit{};
}

RevisionPtr RevisionSearchGitCommand::LineParser::parseRecord(const QString& line) {
  QStringList fields = line.split(fieldSeparator());
  if (fields.size() < kFieldCount) {
    LOG_WARNING(QStringLiteral("Cannot parse search result '%1'").arg(line));
    return nullptr;
  }
  // The subject is last and the only field that may hold the separator itself.
  if (fields.size() > kFieldCount) {
    const QString subject = fields.mid(kFieldCount - 1).join(fieldSeparator());
    fields.resize(kFieldCount - 1);
    fields << subject;
  }
  qsizetype index = 0;
  return parser_.parseRevision(fields, index);
}

void RevisionSearchGitCommand::LineParser::feed(const QString& line) {
  if (!withFiles_) {
    if (line.isEmpty()) return;
    if (RevisionPtr revision = parseRecord(line)) callback_(RevisionWithFiles{std::move(revision), {}});
    return;
  }
  if (line.isEmpty()) {
    finish();
    return;
  }
  if (open_) {
    if (ChangedFilePtr file = RevisionParser::readChangedFile(line)) open_->changedFiles.push_back(std::move(file));
    return;
  }
  if (RevisionPtr revision = parseRecord(line)) open_ = RevisionWithFiles{std::move(revision), {}};
}

void RevisionSearchGitCommand::LineParser::finish() {
  if (!open_) return;
  RevisionWithFiles record = std::move(*open_);
  open_.reset();
  callback_(std::move(record));
}
