#pragma once
// The editable state of one conflicted file: for each stretch of the file the lines of
// both sides and the lines the result holds. Clicking lines and typing in the result
// both change this model; the panes' texts are always generated from it.
// Lives on the main thread.
#include <QString>
#include <memory>
#include <optional>
#include <vector>

// A line's mark in one column of a combined diff.
enum class ContextType { remove, add, none };

// The three panes of the editor.
enum class MergeConflictPart { local, remote, merged };

class MergeConflict {
 public:
  class Chunk;
  class ContextChunk;
  class ChangeChunk;
  class ConflictChunk;
  class Line;
  class SelectableLine;
  class EmptyLine;
  using ChunkPtr = std::shared_ptr<Chunk>;
  using LinePtr = std::shared_ptr<Line>;
  using SelectableLinePtr = std::shared_ptr<SelectableLine>;

  QString filepath;
  bool isMinified = false;
  std::vector<ChunkPtr> chunks;

  // The effective text of every result line, chunk after chunk.
  QString resultText() const;
  int conflictCount() const;
  // Conflicts whose result holds no line yet.
  int unresolvedConflictCount() const;
  // "Resolved 1 conflict of 3", "All conflicts resolved".
  QString title() const;
};

class MergeConflict::Line : public std::enable_shared_from_this<Line> {
 public:
  Line(ContextType changeType, QString originalString)
      : changeType(changeType), originalString(std::move(originalString)) {}
  virtual ~Line() = default;

  std::weak_ptr<Chunk> parentChunk;
  ContextType changeType = ContextType::none;
  QString originalString;
  std::optional<QString> customString;

  QString text() const { return customString.value_or(originalString); }
  virtual SelectableLine* asSelectable() { return nullptr; }

  // Leaves the parent's result (the sides' lists keep it); an edit made to it is dropped.
  virtual void removeFromParentChunk();
  // This line takes the other's text behind its own; the other leaves the result.
  void meldWith(Line& other);
  // Takes [from, to) out of the effective text; a line left empty leaves the result.
  void removeSubrange(qsizetype from, qsizetype to);
  // Inserts at a UTF-16 offset. When that puts a line break before the end, the line
  // keeps the text up to and including it and the rest comes back as a tail.
  std::optional<QString> insert(qsizetype offset, const QString& string);
};

class MergeConflict::SelectableLine : public Line {
 public:
  SelectableLine(ContextType changeType, QString originalString, MergeConflictPart viewMode)
      : Line(changeType, std::move(originalString)), viewMode(viewMode) {}

  MergeConflictPart viewMode;
  bool isSelected = false;

  SelectableLine* asSelectable() override { return this; }
  virtual bool isEmptyLine() const { return false; }
  // Appends the line to its chunk's result; a second call changes nothing.
  void select();
  void removeFromParentChunk() override;
};

// Stands for a side without lines, so that "nothing" can be chosen too.
class MergeConflict::EmptyLine : public SelectableLine {
 public:
  explicit EmptyLine(MergeConflictPart viewMode) : SelectableLine(ContextType::none, QString(), viewMode) {}
  bool isEmptyLine() const override { return true; }
};

class MergeConflict::Chunk : public std::enable_shared_from_this<Chunk> {
 public:
  enum class Kind { context, change, conflict };
  virtual ~Chunk() = default;
  virtual Kind kind() const = 0;
  // Rows the chunk takes in every pane, so that the panes stay aligned.
  virtual qsizetype rowCount() const = 0;
  // Ties every line of the chunk to it.
  virtual void adoptLines() = 0;

  std::vector<LinePtr> resultLines;
};

class MergeConflict::ContextChunk : public Chunk {
 public:
  explicit ContextChunk(std::vector<LinePtr> lines) : lines(std::move(lines)) { resultLines = this->lines; }
  Kind kind() const override { return Kind::context; }
  qsizetype rowCount() const override;
  void adoptLines() override;

  std::vector<LinePtr> lines;
};

class MergeConflict::ChangeChunk : public Chunk {
 public:
  ChangeChunk(std::vector<SelectableLinePtr> remoteLines, std::vector<SelectableLinePtr> localLines)
      : remoteLines(std::move(remoteLines)), localLines(std::move(localLines)) {}
  Kind kind() const override { return Kind::change; }
  qsizetype rowCount() const override;
  void adoptLines() override;

  const std::vector<SelectableLinePtr>& lines(MergeConflictPart side) const {
    return side == MergeConflictPart::remote ? remoteLines : localLines;
  }
  // Every line of the result and of both sides is unselected, edits are dropped and the
  // result is emptied.
  void clear();
  // The result becomes exactly that side's lines.
  void choose(MergeConflictPart side);
  void chooseRemote() { choose(MergeConflictPart::remote); }
  void chooseLocal() { choose(MergeConflictPart::local); }
  // Appends that side's unselected lines to the result / takes them out of it.
  void selectSide(MergeConflictPart side);
  void unselectSide(MergeConflictPart side);

  std::vector<SelectableLinePtr> remoteLines;
  std::vector<SelectableLinePtr> localLines;
};

class MergeConflict::ConflictChunk : public ChangeChunk {
 public:
  ConflictChunk(std::vector<SelectableLinePtr> remoteLines, std::vector<SelectableLinePtr> localLines, QString remoteName,
                QString localName)
      : ChangeChunk(std::move(remoteLines), std::move(localLines)),
        remoteName(std::move(remoteName)),
        localName(std::move(localName)) {}
  Kind kind() const override { return Kind::conflict; }
  bool isResolved() const { return !resultLines.empty(); }

  QString remoteName;
  QString localName;
};
