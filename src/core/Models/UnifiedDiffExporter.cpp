#include "Models/UnifiedDiffExporter.h"

#include <QCoreApplication>
#include <QStringEncoder>

#include "Logging/AdvancedLogger.h"

namespace {

QString modeDigits(const FileMode& mode) { return QStringLiteral("%1").arg(mode.rawValue, 6, 10, QLatin1Char('0')); }

// A parsed line always ends in "\n"; one cut off by a truncated text gets it here, or
// the next line would be glued to it.
void writeLine(PresentationContext& ctx, QChar prefix, const QString& text, QString& buffer) {
  buffer.resize(0);
  buffer.append(prefix);
  buffer.append(text);
  if (!buffer.endsWith(u'\n')) buffer.append(u'\n');
  ctx.append(buffer);
}

}  // namespace

void UnifiedDiffExporter::extractHeader(PresentationContext& ctx) const {
  const auto& oldPath = patch_.oldFilepath;
  const auto& newPath = patch_.newFilepath;
  if (!oldPath && !newPath) {
    LOG_ERROR(QStringLiteral("OldFileName and NewFileName in XFilePatch are not defined."));
  } else {
    ctx.append(QStringLiteral("diff --git a/%1 b/%2\n").arg(oldPath.value_or(*newPath), newPath.value_or(*oldPath)));
  }
  if (!oldPath) ctx.append(u"new file mode 100000\n");
  if (!newPath) ctx.append(u"deleted file mode 100644\n");

  const QString index = QStringLiteral("index %1..%2").arg(patch_.oldTreeIsh, patch_.treeIsh);
  if (patch_.oldFileMode && patch_.newFileMode) {
    ctx.append(QStringLiteral("old mode %1\n").arg(modeDigits(*patch_.oldFileMode)));
    ctx.append(QStringLiteral("new mode %1\n").arg(modeDigits(*patch_.newFileMode)));
    ctx.append(index + u'\n');
  } else if (const auto mode = patch_.oldFileMode ? patch_.oldFileMode : patch_.newFileMode) {
    ctx.append(index + u' ' + modeDigits(*mode) + u'\n');
  }

  ctx.append(oldPath ? QStringLiteral("--- a/%1\n").arg(*oldPath) : QStringLiteral("--- /dev/null\n"));
  ctx.append(newPath ? QStringLiteral("+++ b/%1\n").arg(*newPath) : QStringLiteral("+++ /dev/null\n"));
}

void UnifiedDiffExporter::writeChunks(PresentationContext& ctx) const {
  QString buffer;
  for (const XChunkPtr& chunk : patch_.chunks) {
    ctx.append(QStringLiteral("@@ -%1,%2 +%3,%4 @@\n").arg(chunk->fromStart).arg(chunk->fromLength).arg(chunk->toStart).arg(chunk->toLength));
    for (const XSubChunkPtr& sub : chunk->subChunks) {
      const auto writeAll = [&](const XChangedLineList& lines, QChar prefix) {
        for (const XChangedLinePtr& line : lines) {
          writeLine(ctx, prefix, line->line, buffer);
          if (line->noNewLineAtEndOfFile && sub->noNewLineAtEndOfFileLine) {
            writeLine(ctx, u'\\', u' ' + sub->noNewLineAtEndOfFileLine->line, buffer);
          }
        }
      };
      writeAll(sub->preContextLines, u' ');
      writeAll(sub->removedLines, u'-');
      writeAll(sub->addedLines, u'+');
      writeAll(sub->postContextLines, u' ');
    }
  }
}

void UnifiedDiffExporter::writeTrailer(PresentationContext& ctx) {
  // git apply stops reading at "--"; what follows only says who wrote the patch.
  const QString version = QCoreApplication::applicationVersion();
  ctx.append(u"--\n");
  ctx.append(QStringLiteral("Jelv %1\n").arg(version.isEmpty() ? QStringLiteral("0.1") : version));
}

QString UnifiedDiffExporter::text() const {
  PresentationContext ctx;
  extractHeader(ctx);
  writeChunks(ctx);
  writeTrailer(ctx);
  return ctx.takeString();
}

std::optional<QByteArray> UnifiedDiffExporter::data() const {
  const QString patch = text();
  QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
  QByteArray bytes = encoder.encode(patch);
  if (encoder.hasError()) return std::nullopt;
  return bytes;
}
