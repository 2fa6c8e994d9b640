#include "Git/Commands/Revision/GetRevisionInfosGitCommand.h"

#include "Git/Process/GitRequest.h"

QStringList GetRevisionInfosGitCommand::arguments(const QStringList& shas) {
  const QString separator = RevisionInfo::fieldSeparator();
  QStringList args{QStringLiteral("log"), QStringLiteral("--no-show-signature"), QStringLiteral("--no-walk"),
                   QStringLiteral("--pretty=format:%H") + separator + QStringLiteral("%an") + separator +
                       QStringLiteral("%at") + separator + QStringLiteral("%B") + recordTerminator()};
  args << shas;
  return args;
}

std::vector<RevisionInfo> GetRevisionInfosGitCommand::parse(const QString& output) {
  std::vector<RevisionInfo> infos;
  // Records are "...\0", joined by the format's line feed: "rec1\0\nrec2\0".
  const QStringList records = output.split(QChar(u'\0'));
  for (QString record : records) {
    if (record.startsWith(QLatin1Char('\n'))) record.remove(0, 1);
    if (record.isEmpty()) continue;
    if (auto info = RevisionInfo::parse(record)) infos.push_back(std::move(*info));
  }
  return infos;
}

GitResult<std::vector<RevisionInfo>> GetRevisionInfosGitCommand::execute(const GitModule& module, const QStringList& shas) {
  if (shas.isEmpty()) return std::vector<RevisionInfo>{};
  const GitResponse response = GitRequest(module, arguments(shas)).execute();
  if (!response.isSuccess()) return failureResult<std::vector<RevisionInfo>>(response);
  return parse(response.output);
}
