#include "Models/SelectionPatch.h"

using namespace PatchView;

namespace {

struct Lists {
  XChangedLineList pre, removed, added, post;

  bool hasChange() const { return !removed.empty() || !added.empty(); }
  // An unselected line that the target has: context before or after the change.
  void keepAsContext(const XChangedLinePtr& line) { (hasChange() ? post : pre).push_back(line); }
};

bool isSelected(const ChangedLine& line, qsizetype start, qsizetype end) {
  return !line.range.isEmpty() && line.range.location < end && line.range.end() > start;
}

XChangedLinePtr withNewline(const XChangedLinePtr& line) {
  return std::make_shared<const XChangedLine>(XChangedLine{line->line, false});
}

// A line without a final newline can only stay the last line of its side. When the
// selection puts lines behind it (stage "+c" after an unselected "-b" that had none),
// git apply would glue the two; so the line gets its newline on that side.
void keepMissingNewlinesAtTheEnd(Lists& lists) {
  const auto fixList = [](XChangedLineList& lines, bool moreFollow) {
    for (size_t i = 0; i < lines.size(); ++i) {
      const bool last = i + 1 == lines.size() && !moreFollow;
      if (lines[i]->noNewLineAtEndOfFile && !last) lines[i] = withNewline(lines[i]);
    }
  };
  fixList(lists.removed, !lists.post.empty());
  fixList(lists.added, !lists.post.empty());
  fixList(lists.post, false);
  if (lists.pre.empty()) return;
  for (size_t i = 0; i + 1 < lists.pre.size(); ++i) {
    if (lists.pre[i]->noNewLineAtEndOfFile) lists.pre[i] = withNewline(lists.pre[i]);
  }
  const XChangedLinePtr last = lists.pre.back();
  if (!last->noNewLineAtEndOfFile) return;
  const bool lastOnOldSide = lists.removed.empty() && lists.post.empty();
  const bool lastOnNewSide = lists.added.empty() && lists.post.empty();
  if (lastOnOldSide && lastOnNewSide) return;
  lists.pre.pop_back();
  if (!lastOnOldSide && !lastOnNewSide) {
    lists.pre.push_back(withNewline(last));
  } else if (lastOnOldSide) {
    // Old side ends here, new side goes on: "-b" without newline, "+b" with one.
    lists.removed.push_back(last);
    lists.added.insert(lists.added.begin(), withNewline(last));
  } else {
    lists.added.push_back(last);
    lists.removed.insert(lists.removed.begin(), withNewline(last));
  }
}

XSubChunkPtr selectLines(const SubChunk& view, SelectionMode mode, qsizetype start, qsizetype end) {
  Lists lists;
  for (const ChangedLine& line : view.preContextLines) {
    if (line.node) lists.pre.push_back(line.node);
  }
  for (const ChangedLine& line : view.removedLines) {
    if (!line.node) continue;
    const bool selected = isSelected(line, start, end);
    switch (mode) {
      case SelectionMode::stage:
        if (selected) lists.removed.push_back(line.node);
        else lists.keepAsContext(line.node);
        break;
      case SelectionMode::unstage:
        if (selected) lists.removed.push_back(line.node);
        break;
      case SelectionMode::discard:
        if (selected) lists.added.push_back(line.node);
        break;
    }
  }
  for (const ChangedLine& line : view.addedLines) {
    if (!line.node) continue;
    const bool selected = isSelected(line, start, end);
    switch (mode) {
      case SelectionMode::stage:
        if (selected) lists.added.push_back(line.node);
        break;
      case SelectionMode::unstage:
        if (selected) lists.added.push_back(line.node);
        else lists.keepAsContext(line.node);
        break;
      case SelectionMode::discard:
        if (selected) lists.removed.push_back(line.node);
        else lists.keepAsContext(line.node);
        break;
    }
  }
  for (const ChangedLine& line : view.postContextLines) {
    if (line.node) (lists.hasChange() ? lists.post : lists.pre).push_back(line.node);
  }
  keepMissingNewlinesAtTheEnd(lists);

  auto sub = std::make_shared<XSubChunk>();
  sub->preContextLines = std::move(lists.pre);
  sub->removedLines = std::move(lists.removed);
  sub->addedLines = std::move(lists.added);
  sub->postContextLines = std::move(lists.post);
  sub->noNewLineAtEndOfFileLine = view.node ? view.node->noNewLineAtEndOfFileLine : nullptr;
  return sub;
}

XChunkPtr selectChunk(const Chunk& view, SelectionMode mode, qsizetype start, qsizetype end) {
  auto chunk = std::make_shared<XChunk>();
  bool changes = false;
  for (const SubChunk& sub : view.subChunks) {
    XSubChunkPtr selected = selectLines(sub, mode, start, end);
    changes = changes || !selected->removedLines.empty() || !selected->addedLines.empty();
    chunk->subChunks.push_back(std::move(selected));
  }
  // git apply calls a hunk without a change corrupt and refuses the whole patch, so a
  // drag that starts in the trailing context of one hunk must not bring that hunk in.
  if (!changes) return nullptr;
  for (const XSubChunkPtr& sub : chunk->subChunks) {
    const auto context = qint64(sub->preContextLines.size() + sub->postContextLines.size());
    chunk->fromLength += context + qint64(sub->removedLines.size());
    chunk->toLength += context + qint64(sub->addedLines.size());
  }
  chunk->fromStart = view.node ? view.node->fromStart : 0;
  chunk->toStart = view.node ? view.node->toStart : 0;
  chunk->contextString = view.node ? view.node->contextString : QString();
  return chunk;
}

bool keepsLinesOnNewSide(const std::vector<XChunkPtr>& chunks) {
  for (const XChunkPtr& chunk : chunks) {
    if (chunk->toLength > 0) return true;
  }
  return false;
}

// Points the header at the file as the target has it.
void retarget(XFilePatch& file, SelectionMode mode) {
  auto& oldPath = file.oldFilepath;
  auto& newPath = file.newFilepath;
  switch (mode) {
    case SelectionMode::stage:
      // Applies to the index, which has the old side.
      if (oldPath && newPath && *oldPath != *newPath) newPath = oldPath;
      if (oldPath && !newPath && keepsLinesOnNewSide(file.chunks)) newPath = oldPath;
      break;
    case SelectionMode::unstage:
      // Applies in reverse to the index, which has the new side. A created file stays
      // (no "new file" header), a moved one isn't moved back.
      if (newPath && (!oldPath || *oldPath != *newPath)) oldPath = newPath;
      break;
    case SelectionMode::discard:
      // Applies forward to the working tree, which has the new side.
      if (newPath && (!oldPath || *oldPath != *newPath)) {
        oldPath = newPath;
      } else if (oldPath && !newPath) {
        // The file is gone from the working tree: bring the selected lines back.
        newPath = oldPath;
        oldPath.reset();
      }
      break;
  }
}

}  // namespace

XPatchPtr SelectionPatch::make(qsizetype selectionStart, qsizetype selectionEnd, SelectionMode mode,
                               const std::vector<FilePatch>& files) {
  auto patch = std::make_shared<XPatch>();
  for (const FilePatch& fileView : files) {
    if (!fileView.node || !fileView.range.meets(selectionStart, selectionEnd)) continue;
    std::vector<XChunkPtr> chunks;
    for (const Chunk& chunkView : fileView.chunks) {
      if (!chunkView.range.meets(selectionStart, selectionEnd)) continue;
      if (XChunkPtr chunk = selectChunk(chunkView, mode, selectionStart, selectionEnd)) chunks.push_back(std::move(chunk));
    }
    if (chunks.empty()) continue;
    XFilePatch file = *fileView.node;
    file.chunks = std::move(chunks);
    file.location = mode == SelectionMode::unstage ? XFilePatch::Location::staged : XFilePatch::Location::unstaged;
    retarget(file, mode);
    patch->files.push_back(std::move(file));
  }
  if (patch->files.empty()) return nullptr;
  return patch;
}

std::optional<SelectionPatch::DiscardConfirmation> SelectionPatch::discardConfirmation(const XPatch& patch, bool wholeHunk) {
  const qint64 count = patch.changedLinesCount();
  if (count < 1) return std::nullopt;
  if (wholeHunk) {
    return DiscardConfirmation{QStringLiteral("Do you want to discard the changes in this hunk?"),
                               QStringLiteral("You can't undo this action."), QStringLiteral("Discard Hunk"),
                               QStringLiteral("Cancel")};
  }
  return DiscardConfirmation{
      QStringLiteral("Do you want to discard the changes in the selected lines?"),
      QStringLiteral("You can't undo this action."),
      count == 1 ? QStringLiteral("Discard Line") : QStringLiteral("Discard %1 Lines").arg(count),
      QStringLiteral("Cancel"),
  };
}

QStringList SelectionPatch::changedPaths(const XPatch& patch) {
  QStringList paths;
  for (const XFilePatch& file : patch.files) {
    if (file.oldFilepath) paths << *file.oldFilepath;
    else if (file.newFilepath) paths << *file.newFilepath;
  }
  return paths;
}
