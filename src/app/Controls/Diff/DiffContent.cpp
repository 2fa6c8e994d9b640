#include "Controls/Diff/DiffContent.h"

#include <QLocale>
#include <QObject>

#include "Models/FileContent/BinaryDiffFileContent.h"
#include "Models/FileContent/LfsFileContent.h"
#include "Models/FileContent/SubmoduleDiffFileContent.h"
#include "Models/FileContent/TextDiffFileContent.h"
#include "Models/FileContent/TextDisplayDecision.h"
#include "Models/FileContent/UnknownBinaryFileContent.h"
#include "Models/RevisionDetails.h"

namespace {

QString sizeText(const std::optional<qint64>& size) {
  return size ? QLocale().formattedDataSize(*size) : QObject::tr("none");
}

QString lfsText(const std::optional<LfsPointer>& pointer) {
  if (!pointer) return QObject::tr("none");
  return QStringLiteral("%1 (%2)").arg(pointer->sha.left(12), QLocale().formattedDataSize(pointer->size));
}

DiffContent message(const QString& text) {
  DiffContent content;
  content.message = text;
  return content;
}

}  // namespace

DiffContent diffContentFrom(const GitResult<DiffFileContentPtr>& result, XFilePatch::Location location, bool loadLarge) {
  if (!result) {
    if (result.isError<Error::Canceled>()) return {};
    return message(describe(result.error()));
  }
  const DiffFileContentPtr& content = result.value();
  DiffContent out;
  switch (content->kind()) {
    case DiffFileContent::Kind::text: {
      const auto& text = static_cast<const TextDiffFileContent&>(*content);
      if (content->changedFile && content->changedFile->changeType == ChangeType::unmerged) {
        out.conflictDiff = text.diffString;
        return out;
      }
      if (text.diffString.trimmed().isEmpty()) return message(QObject::tr("No changes to show."));
      const TextDisplayDecision decision =
          TextDisplayDecision::forDiff(text.diffString, content->changedFile ? content->changedFile->path : QString(), location, loadLarge);
      if (decision.kind == TextDisplayDecision::Kind::tooLarge) {
        out.message = TextDisplayDecision::fallbackTitle;
        out.offerLoadLarge = true;
        return out;
      }
      if (decision.kind != TextDisplayDecision::Kind::render || !decision.patch || decision.patch->files.empty()) {
        return message(QObject::tr("The diff could not be read."));
      }
      const XFilePatch& file = decision.patch->files.front();
      if (file.chunks.empty()) {
        return message(file.oldFileMode != file.newFileMode ? QObject::tr("Only the file mode changed.") : QObject::tr("No text changes."));
      }
      out.rows = unifiedDiffRows(file);
      if (decision.patch->files.size() == 1) {
        out.patch = decision.patch;
      } else {
        auto single = std::make_shared<XPatch>();
        single->files.push_back(file);
        out.patch = std::move(single);
      }
      return out;
    }
    case DiffFileContent::Kind::binary: {
      const auto& images = static_cast<const BinaryDiffFileContent&>(*content);
      if (images.old) out.oldImage = QImage::fromData(*images.old);
      if (images.new_) out.newImage = QImage::fromData(*images.new_);
      out.isImage = true;
      return out;
    }
    case DiffFileContent::Kind::lfs: {
      const auto& lfs = static_cast<const LfsFileContent&>(*content);
      out.message = QObject::tr("Git LFS file\nBefore: %1\nAfter: %2").arg(lfsText(lfs.old), lfsText(lfs.current));
      return out;
    }
    case DiffFileContent::Kind::unknownBinary: {
      const auto& binary = static_cast<const UnknownBinaryFileContent&>(*content);
      out.message = QObject::tr("Binary file\nBefore: %1\nAfter: %2").arg(sizeText(binary.oldSize), sizeText(binary.newSize));
      if (auto tip = TextDisplayDecision::notLfsTip(binary.newSize.value_or(0))) out.message += QStringLiteral("\n\n") + *tip;
      return out;
    }
    case DiffFileContent::Kind::submodule: {
      const auto& sub = static_cast<const SubmoduleDiffFileContent&>(*content);
      auto describeRevision = [](const RevisionDetails& details) {
        if (details.sha.isEmpty()) return QObject::tr("none");
        return QStringLiteral("%1 %2").arg(details.sha.left(10), details.message.section(QLatin1Char('\n'), 0, 0));
      };
      out.message = QObject::tr("Submodule %1\nBefore: %2\nAfter: %3")
                        .arg(sub.submodule.path, describeRevision(sub.oldRevision), describeRevision(sub.newRevision));
      if (sub.submoduleChangesCount > 0) out.message += QObject::tr("\n%n changed file(s) inside", nullptr, sub.submoduleChangesCount);
      return out;
    }
  }
  return out;
}
