#include "Git/Commands/Repository/GetReferencesGitCommand.h"

#include <algorithm>

#include "Extensions/DecimalInteger.h"
#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"
#include "Models/BisectMark.h"
#include "Models/LocalBranch.h"
#include "Models/RemoteBranch.h"
#include "Models/Tag.h"

namespace {

constexpr int kFieldCount = 7;

// "1700000000 +0100": the seconds before the first blank.
std::optional<QDateTime> parseRawDate(QStringView raw) {
  const qsizetype blank = raw.indexOf(QLatin1Char(' '));
  const auto seconds = DecimalInteger::parse(blank < 0 ? raw : raw.left(blank));
  if (!seconds) return std::nullopt;
  return QDateTime::fromSecsSinceEpoch(*seconds, Qt::UTC);
}

std::optional<QString> nonEmpty(QStringView text) {
  if (text.isEmpty()) return std::nullopt;
  return text.toString();
}

// "<sha>\trefs/heads/main\t*\trefs/remotes/origin/main\t\t1700000000 +0100\t"
ReferencePtr parseLine(QStringView line) {
  QStringView fields[kFieldCount];
  int count = 0;
  qsizetype start = 0;
  while (true) {
    const qsizetype tab = line.indexOf(QLatin1Char('\t'), start);
    const QStringView field = tab < 0 ? line.mid(start) : line.mid(start, tab - start);
    if (count < kFieldCount) fields[count] = field;
    ++count;
    if (tab < 0) break;
    start = tab + 1;
  }
  if (count != kFieldCount) {
    LOG_ERROR(QStringLiteral("Cannot parse reference line '%1'").arg(line));
    return nullptr;
  }
  const QStringView sha = fields[0];
  const QStringView fullReference = fields[1];
  const bool isActive = fields[2] == QLatin1String("*");
  const QStringView upstream = fields[3];
  const QStringView peeled = fields[4];

  // An annotated tag takes the date of the commit it points at. A tag of a tree or a
  // blob (git.git has several) has no commit and so no date: it is listed without one.
  const QStringView rawDate = peeled.isEmpty() ? fields[5] : fields[6];
  const auto date = rawDate.isEmpty() ? std::optional<QDateTime>(QDateTime()) : parseRawDate(rawDate);
  if (!date) {
    LOG_ERROR(QStringLiteral("Cannot parse reference date in '%1'").arg(line));
    return nullptr;
  }
  if (fullReference == QLatin1String("refs/stash")) return nullptr;

  static const QLatin1String heads("refs/heads/"), tags("refs/tags/"), remotes("refs/remotes/"), bisect("refs/bisect/");
  if (fullReference.startsWith(heads)) {
    const QString name = fullReference.mid(heads.size()).toString();
    return std::make_shared<const LocalBranch>(sha.toString(), fullReference.toString(), name, name, *date, isActive,
                                               nonEmpty(upstream));
  }
  if (fullReference.startsWith(tags)) {
    const QString name = fullReference.mid(tags.size()).toString();
    return std::make_shared<const Tag>(sha.toString(), fullReference.toString(), name, name, *date, nonEmpty(peeled));
  }
  if (fullReference.startsWith(remotes)) {
    const QStringView fullName = fullReference.mid(remotes.size());
    const qsizetype slash = fullName.indexOf(QLatin1Char('/'));
    if (slash < 0) return nullptr;
    const QStringView name = fullName.mid(slash + 1);
    // The remote's symbolic HEAD is no branch of its own.
    if (name == QLatin1String("HEAD")) return nullptr;
    return std::make_shared<const RemoteBranch>(sha.toString(), fullReference.toString(), name.toString(),
                                                fullName.toString(), *date, fullName.left(slash).toString());
  }
  if (fullReference.startsWith(bisect)) {
    const QStringView name = fullReference.mid(bisect.size());
    // "old" is the good side when bisecting with old/new terms.
    const bool isGood = name.startsWith(QLatin1String("good")) || name.startsWith(QLatin1String("old"));
    return std::make_shared<const BisectMark>(sha.toString(), fullReference.toString(), name.toString(), name.toString(),
                                              *date, isGood);
  }
  return nullptr;  // notes, replace refs and other namespaces are no references of the list
}

}  // namespace

QStringList GetReferencesGitCommand::arguments(Subdomain subdomains) {
  QStringList args{QStringLiteral("for-each-ref"),
                   QStringLiteral("--format=%(objectname)\t%(refname)\t%(HEAD)\t%(upstream)\t%(*objectname)\t"
                                  "%(committerdate:raw)\t%(*committerdate:raw)")};
  if (subdomains.contains(Subdomain::references())) return args;
  if (subdomains.contains(Subdomain::localBranches())) args << QStringLiteral("refs/heads/");
  if (subdomains.contains(Subdomain::remoteBranches())) args << QStringLiteral("refs/remotes/");
  if (subdomains.contains(Subdomain::tags())) args << QStringLiteral("refs/tags/");
  return args;
}

ReferenceList GetReferencesGitCommand::parse(const QString& output) {
  ReferenceList references;
  references.reserve(static_cast<size_t>(output.count(QLatin1Char('\n')) + 1));
  const QStringView text(output);
  qsizetype start = 0;
  while (start < text.size()) {
    qsizetype end = text.indexOf(QLatin1Char('\n'), start);
    if (end < 0) end = text.size();
    if (end > start) {
      if (auto reference = parseLine(text.mid(start, end - start))) references.push_back(std::move(reference));
    }
    start = end + 1;
  }
  std::stable_sort(references.begin(), references.end(),
                   [](const ReferencePtr& a, const ReferencePtr& b) { return a->fullReference < b->fullReference; });
  return references;
}

GitResult<ReferenceList> GetReferencesGitCommand::execute(const GitModule& module, Subdomain subdomains) {
  const GitResponse response = GitRequest(module, arguments(subdomains)).execute();
  if (!response.isSuccess()) return failureResult<ReferenceList>(response);
  return parse(response.output);
}
