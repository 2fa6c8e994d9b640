#include "Git/Commands/Revision/GetBlameGitCommand.h"

#include <QHash>

#include "Extensions/DecimalInteger.h"
#include "Extensions/GitQuotedPath.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/Cancelable.h"
#include "Logging/AdvancedLogger.h"

// The porcelain output is a run of groups. A group opens with "<sha> <orig> <final>
// <count>"; each further line of it has "<sha> <orig> <final>". The first time a commit
// appears its header lines follow ("author ...", "summary ...", "filename ..."); every
// line of the file comes behind a tab.
namespace {

struct Header {
  QString sha;
  int finalLine = 0;
  int count = -1;  // -1: a line inside the open group
};

std::optional<Header> parseHeader(const QString& line) {
  const QStringList fields = line.split(QLatin1Char(' '));
  if (fields.size() != 3 && fields.size() != 4) return std::nullopt;
  const QString& sha = fields.at(0);
  if (sha.size() != 40 && sha.size() != 64) return std::nullopt;
  for (const QChar c : sha) {
    if (!c.isDigit() && (c < QLatin1Char('a') || c > QLatin1Char('f'))) return std::nullopt;
  }
  const auto original = DecimalInteger::parse(QStringView(fields.at(1)));
  const auto final = DecimalInteger::parse(QStringView(fields.at(2)));
  if (!original || !final) return std::nullopt;
  Header header{sha, static_cast<int>(*final), -1};
  if (fields.size() == 4) {
    const auto count = DecimalInteger::parse(QStringView(fields.at(3)));
    if (!count) return std::nullopt;
    header.count = static_cast<int>(*count);
  }
  return header;
}

bool startsWithAny(const QString& line, std::initializer_list<QLatin1StringView> prefixes) {
  for (const auto prefix : prefixes) {
    if (line.startsWith(prefix)) return true;
  }
  return false;
}

// Reads a commit's header lines from `index` up to its first content line.
std::shared_ptr<BlameChunk::RevisionInfo> parseRevisionHeader(const QStringList& lines, qsizetype& index, const QString& sha) {
  auto info = std::make_shared<BlameChunk::RevisionInfo>();
  info->sha = sha;
  for (; index < lines.size() && !lines.at(index).startsWith(QLatin1Char('\t')); ++index) {
    const QString& line = lines.at(index);
    if (line.startsWith(QLatin1String("author "))) {
      info->author = line.mid(7);
    } else if (line.startsWith(QLatin1String("author-mail "))) {
      QString mail = line.mid(12);
      if (mail.startsWith(QLatin1Char('<')) && mail.endsWith(QLatin1Char('>'))) mail = mail.mid(1, mail.size() - 2);
      info->authorMail = mail;
    } else if (line.startsWith(QLatin1String("author-time "))) {
      if (const auto seconds = DecimalInteger::parse(QStringView(line).mid(12))) {
        info->authorDate = QDateTime::fromSecsSinceEpoch(*seconds, Qt::UTC);
      }
    } else if (line.startsWith(QLatin1String("summary "))) {
      info->message = line.mid(8);
    } else if (line.startsWith(QLatin1String("previous "))) {
      // "previous <sha> <path>", the path quoted when it holds special characters
      const qsizetype blank = line.indexOf(QLatin1Char(' '), 9);
      if (blank > 9) info->previous = BlameArgs{line.mid(9, blank - 9), GitQuotedPath::unquote(QStringView(line).mid(blank + 1))};
    } else if (!startsWithAny(line, {QLatin1StringView("author-tz "), QLatin1StringView("committer"),
                                     QLatin1StringView("boundary"), QLatin1StringView("filename ")})) {
      LOG_WARNING(QStringLiteral("Unexpected blame prefix in line: '%1'").arg(line));
    }
  }
  return info;
}

}  // namespace

QStringList GetBlameGitCommand::arguments(const QString& sha, const QString& path) {
  return {QStringLiteral("blame"), QStringLiteral("--porcelain"), sha, QStringLiteral("--"), path};
}

GitResult<BlameChunkList> GetBlameGitCommand::execute(const GitModule& module, const QString& sha, const QString& path,
                                                      Cancelable* cancelation) {
  const GitResponse response = GitRequest(module, arguments(sha, path)).execute(false, cancelation);
  if (cancelation && cancelation->isCanceled()) return Error::Canceled{};
  if (!response.isSuccess()) return failureResult<BlameChunkList>(response);
  return parse(response.output);
}

GitResult<BlameChunkList> GetBlameGitCommand::parse(const QString& output) {
  const QStringList lines = output.split(QLatin1Char('\n'));
  QHash<QString, std::shared_ptr<const BlameChunk::RevisionInfo>> infos;
  BlameChunkList chunks;
  qsizetype index = 0;
  while (index < lines.size()) {
    const QString& line = lines.at(index);
    if (line.isEmpty() && index == lines.size() - 1) break;  // behind the last line feed
    const auto header = parseHeader(line);
    if (!header) {
      LOG_ERROR(QStringLiteral("Can't parse blame header line: '%1'").arg(line));
      return Error::CannotParse{QStringLiteral("Cannot parse blame.")};
    }
    ++index;
    auto known = infos.constFind(header->sha);
    if (known == infos.constEnd()) {
      known = infos.insert(header->sha, parseRevisionHeader(lines, index, header->sha));
    } else {
      // A later group of a known commit may still name its file.
      while (index < lines.size() && !lines.at(index).startsWith(QLatin1Char('\t'))) ++index;
    }
    if (header->count >= 0) {
      chunks.push_back(BlameChunk{header->finalLine, header->count, *known});
    } else if (chunks.empty() || chunks.back().revisionInfo->sha != header->sha) {
      return Error::CannotReachHere{QStringLiteral("Error in parsing blame. Can't reach here.")};
    }
    if (index >= lines.size()) return Error::CannotReachHere{QStringLiteral("Error in parsing blame. Can't reach here.")};
    ++index;  // the line's content, behind its tab
  }
  return chunks;
}
