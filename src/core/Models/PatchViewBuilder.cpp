#include "Models/PatchViewBuilder.h"

#include "Models/PresentationContext.h"

using namespace PatchView;

namespace {

struct LineNumbers {
  qint64 old = 0;
  qint64 current = 0;
};

// One shown text and the rows written into it.
class Column {
 public:
  qsizetype cursor() const { return ctx_.cursor(); }
  QString takeText() { return ctx_.takeString(); }

  Range writeRow(QStringView text) {
    // Rows end in "\n" alone: a "\r" of a CRLF file would count as a row of its own.
    if (text.endsWith(u'\n')) text.chop(1);
    if (text.endsWith(u'\r')) text.chop(1);
    buffer_.resize(0);
    buffer_.append(text);
    buffer_.append(u'\n');
    const qsizetype start = ctx_.cursor();
    ctx_.append(buffer_);
    return {start, ctx_.cursor() - start};
  }

  ChangedLine line(const XChangedLinePtr& node, std::optional<qint64> oldNumber, std::optional<qint64> newNumber) {
    const qsizetype row = ctx_.line();
    return {writeRow(node->line), row, node, node->noNewLineAtEndOfFile, oldNumber, newNumber};
  }
  // A line of the other side: part of the tree, never selectable.
  ChangedLine hidden(const XChangedLinePtr& node) const {
    return {Range{ctx_.cursor(), 0}, ctx_.line(), node, node->noNewLineAtEndOfFile, std::nullopt, std::nullopt};
  }
  ChangedLine padding() {
    const qsizetype row = ctx_.line();
    return {writeRow(u""), row, nullptr, false, std::nullopt, std::nullopt};
  }
  ChangedLine marker(const XChangedLinePtr& pragma) {
    const qsizetype row = ctx_.line();
    return {writeRow(QString(QStringLiteral("\\ ") + pragma->line)), row, pragma, false, std::nullopt, std::nullopt};
  }

 private:
  PresentationContext ctx_;
  QString buffer_;
};

Schema schemaOf(const XSubChunk& sub) {
  if (sub.removedLines.empty()) return sub.addedLines.empty() ? Schema::context : Schema::addition;
  return sub.addedLines.empty() ? Schema::removal : Schema::modification;
}

Range spanning(qsizetype start, qsizetype end) { return {start, end - start}; }

std::shared_ptr<const XFilePatch> fileNode(const XPatchPtr& patch, size_t index) {
  // Shares ownership with the patch instead of copying the file.
  return std::shared_ptr<const XFilePatch>(patch, &patch->files[index]);
}

// Writes context lines on one column, with the marker behind a flagged one.
void writeContext(Column& column, SubChunk& view, const XSubChunk& sub, const XChangedLineList& lines,
                  std::vector<ChangedLine>& into, LineNumbers& numbers, bool showOld, bool showNew) {
  for (const XChangedLinePtr& line : lines) {
    const qint64 oldNumber = numbers.old++, newNumber = numbers.current++;
    into.push_back(column.line(line, showOld ? std::optional(oldNumber) : std::nullopt,
                               showNew ? std::optional(newNumber) : std::nullopt));
    if (line->noNewLineAtEndOfFile && sub.noNewLineAtEndOfFileLine) view.noNewLineAtEndOfFileLine = column.marker(sub.noNewLineAtEndOfFileLine);
  }
}

SubChunk unifiedSubChunk(Column& column, const XSubChunkPtr& sub, LineNumbers& numbers) {
  SubChunk view;
  view.node = sub;
  view.schema = schemaOf(*sub);
  const qsizetype start = column.cursor();
  writeContext(column, view, *sub, sub->preContextLines, view.preContextLines, numbers, true, true);
  for (const XChangedLinePtr& line : sub->removedLines) {
    view.removedLines.push_back(column.line(line, numbers.old++, std::nullopt));
    if (line->noNewLineAtEndOfFile && sub->noNewLineAtEndOfFileLine) view.noNewLineAtEndOfFileLine = column.marker(sub->noNewLineAtEndOfFileLine);
  }
  for (const XChangedLinePtr& line : sub->addedLines) {
    view.addedLines.push_back(column.line(line, std::nullopt, numbers.current++));
    if (line->noNewLineAtEndOfFile && sub->noNewLineAtEndOfFileLine) view.noNewLineAtEndOfFileLine = column.marker(sub->noNewLineAtEndOfFileLine);
  }
  writeContext(column, view, *sub, sub->postContextLines, view.postContextLines, numbers, true, true);
  view.range = spanning(start, column.cursor());
  return view;
}

// Writes both columns of one sub-chunk; the rows of the two stay paired.
void sideBySideSubChunk(Column& left, Column& right, const XSubChunkPtr& sub, LineNumbers& numbers, SubChunk& leftView,
                        SubChunk& rightView) {
  for (SubChunk* view : {&leftView, &rightView}) {
    view->node = sub;
    view->schema = schemaOf(*sub);
  }
  const qsizetype leftStart = left.cursor(), rightStart = right.cursor();
  LineNumbers leftNumbers = numbers, rightNumbers = numbers;
  writeContext(left, leftView, *sub, sub->preContextLines, leftView.preContextLines, leftNumbers, true, false);
  writeContext(right, rightView, *sub, sub->preContextLines, rightView.preContextLines, rightNumbers, false, true);

  // A side's items: its lines, each flagged one followed by its marker.
  struct Item {
    XChangedLinePtr line;
    bool isMarker = false;
  };
  const auto itemsOf = [&sub](const XChangedLineList& lines) {
    std::vector<Item> items;
    for (const XChangedLinePtr& line : lines) {
      items.push_back({line, false});
      if (line->noNewLineAtEndOfFile && sub->noNewLineAtEndOfFileLine) items.push_back({sub->noNewLineAtEndOfFileLine, true});
    }
    return items;
  };
  const std::vector<Item> removed = itemsOf(sub->removedLines), added = itemsOf(sub->addedLines);
  for (const XChangedLinePtr& line : sub->addedLines) leftView.addedLines.push_back(left.hidden(line));
  for (const XChangedLinePtr& line : sub->removedLines) rightView.removedLines.push_back(right.hidden(line));
  const auto writeSide = [](Column& column, SubChunk& view, const std::vector<Item>& items, size_t rows,
                            std::vector<ChangedLine>& into, qint64& number, bool oldSide) {
    for (size_t i = 0; i < rows; ++i) {
      if (i >= items.size()) {
        view.alignmentLines.push_back(column.padding());
      } else if (items[i].isMarker) {
        view.noNewLineAtEndOfFileLine = column.marker(items[i].line);
      } else {
        const qint64 lineNumber = number++;
        into.push_back(column.line(items[i].line, oldSide ? std::optional(lineNumber) : std::nullopt,
                                   oldSide ? std::nullopt : std::optional(lineNumber)));
      }
    }
  };
  const size_t rows = std::max(removed.size(), added.size());
  writeSide(left, leftView, removed, rows, leftView.removedLines, leftNumbers.old, true);
  writeSide(right, rightView, added, rows, rightView.addedLines, rightNumbers.current, false);
  leftNumbers.current += qint64(sub->addedLines.size());
  rightNumbers.old += qint64(sub->removedLines.size());

  writeContext(left, leftView, *sub, sub->postContextLines, leftView.postContextLines, leftNumbers, true, false);
  writeContext(right, rightView, *sub, sub->postContextLines, rightView.postContextLines, rightNumbers, false, true);
  leftView.range = spanning(leftStart, left.cursor());
  rightView.range = spanning(rightStart, right.cursor());
  numbers = {leftNumbers.old, rightNumbers.current};
}

}  // namespace

QString PatchViewBuilder::fileTitle(const XFilePatch& file) {
  if (file.oldFilepath && file.newFilepath && *file.oldFilepath != *file.newFilepath) {
    return *file.oldFilepath + QStringLiteral(" \u2192 ") + *file.newFilepath;
  }
  return file.newFilepath.value_or(file.oldFilepath.value_or(QString()));
}

QString PatchViewBuilder::chunkTitle(const XChunk& chunk) {
  qint64 fromLength = 0, toLength = 0;
  for (const XSubChunkPtr& sub : chunk.subChunks) {
    const auto context = qint64(sub->preContextLines.size() + sub->postContextLines.size());
    fromLength += context + qint64(sub->removedLines.size());
    toLength += context + qint64(sub->addedLines.size());
  }
  return QStringLiteral("@@ -%1,%2 +%3,%4 @@%5")
      .arg(chunk.fromStart)
      .arg(fromLength)
      .arg(chunk.toStart)
      .arg(toLength)
      .arg(chunk.contextString);
}

Document PatchViewBuilder::unified(const XPatchPtr& patch) {
  Document document;
  Column column;
  for (size_t i = 0; i < patch->files.size(); ++i) {
    const XFilePatch& file = patch->files[i];
    FilePatch fileView;
    fileView.node = fileNode(patch, i);
    fileView.headerRange = column.writeRow(fileTitle(file));
    for (const XChunkPtr& chunk : file.chunks) {
      Chunk chunkView;
      chunkView.node = chunk;
      chunkView.header = column.writeRow(chunkTitle(*chunk));
      LineNumbers numbers{chunk->fromStart, chunk->toStart};
      for (const XSubChunkPtr& sub : chunk->subChunks) chunkView.subChunks.push_back(unifiedSubChunk(column, sub, numbers));
      chunkView.innerRange = spanning(chunkView.header.end(), column.cursor());
      chunkView.range = spanning(chunkView.header.location, column.cursor());
      fileView.chunks.push_back(std::move(chunkView));
    }
    fileView.innerRange = spanning(fileView.headerRange.end(), column.cursor());
    fileView.range = spanning(fileView.headerRange.location, column.cursor());
    document.files.push_back(std::move(fileView));
  }
  document.text = column.takeText();
  return document;
}

PatchViewBuilder::SideBySide PatchViewBuilder::sideBySide(const XPatchPtr& patch) {
  SideBySide result;
  Column left, right;
  for (size_t i = 0; i < patch->files.size(); ++i) {
    const XFilePatch& file = patch->files[i];
    FilePatch leftFile, rightFile;
    leftFile.node = rightFile.node = fileNode(patch, i);
    const QString title = fileTitle(file);
    leftFile.headerRange = left.writeRow(title);
    rightFile.headerRange = right.writeRow(title);
    for (const XChunkPtr& chunk : file.chunks) {
      Chunk leftChunk, rightChunk;
      leftChunk.node = rightChunk.node = chunk;
      const QString header = chunkTitle(*chunk);
      leftChunk.header = left.writeRow(header);
      rightChunk.header = right.writeRow(header);
      LineNumbers numbers{chunk->fromStart, chunk->toStart};
      for (const XSubChunkPtr& sub : chunk->subChunks) {
        SubChunk leftSub, rightSub;
        sideBySideSubChunk(left, right, sub, numbers, leftSub, rightSub);
        leftChunk.subChunks.push_back(std::move(leftSub));
        rightChunk.subChunks.push_back(std::move(rightSub));
      }
      leftChunk.innerRange = spanning(leftChunk.header.end(), left.cursor());
      leftChunk.range = spanning(leftChunk.header.location, left.cursor());
      rightChunk.innerRange = spanning(rightChunk.header.end(), right.cursor());
      rightChunk.range = spanning(rightChunk.header.location, right.cursor());
      leftFile.chunks.push_back(std::move(leftChunk));
      rightFile.chunks.push_back(std::move(rightChunk));
    }
    leftFile.innerRange = spanning(leftFile.headerRange.end(), left.cursor());
    leftFile.range = spanning(leftFile.headerRange.location, left.cursor());
    rightFile.innerRange = spanning(rightFile.headerRange.end(), right.cursor());
    rightFile.range = spanning(rightFile.headerRange.location, right.cursor());
    result.left.files.push_back(std::move(leftFile));
    result.right.files.push_back(std::move(rightFile));
  }
  result.left.text = left.takeText();
  result.right.text = right.takeText();
  return result;
}

const Chunk* PatchView::chunkAt(const std::vector<FilePatch>& files, qsizetype index) {
  for (const FilePatch& file : files) {
    if (!file.range.contains(index)) continue;
    for (const Chunk& chunk : file.chunks) {
      if (!chunk.range.isEmpty() && chunk.range.location <= index && chunk.range.end() > index) return &chunk;
    }
    return nullptr;
  }
  return nullptr;
}
