#pragma once
// Pulls bytes from a file descriptor in fixed chunks and cuts them into lines, so that
// output of any size passes through in the memory of one chunk plus the longest line.
#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

#include "Git/Process/TextEncoding.h"

class StreamLineReader {
 public:
  // Takes ownership of fd. Gives nothing when the delimiter can't be encoded.
  static std::unique_ptr<StreamLineReader> create(int fd, const QString& delimiter, TextEncoding encoding, qsizetype chunkSize);
  ~StreamLineReader();
  StreamLineReader(const StreamLineReader&) = delete;
  StreamLineReader& operator=(const StreamLineReader&) = delete;

  // The next line without its delimiter; no text at the end or for an undecodable line.
  std::optional<QString> nextLine();
  // The next line as raw bytes, for parsers that decode fields themselves.
  std::optional<QByteArray> nextLineBytes();
  void close();
  bool isAtEof() const { return atEof_; }
  int fileDescriptor() const { return fd_; }

 private:
  StreamLineReader(int fd, QByteArray delimiter, TextEncoding encoding, qsizetype chunkSize);
  bool nextLineView(const char*& data, qsizetype& size);

  TextEncoding encoding_;
  qsizetype chunkSize_;
  QByteArray delimData_;
  QByteArray tail_;
  int fd_;
  QByteArray buffer_;
  qsizetype start_ = 0;  // bytes before this offset were already delivered
  bool atEof_ = false;
};

// Treats a carriage return and a line feed each as a line end: git's progress meters
// redraw with a carriage return. A CR LF pair gives a line and then an empty line.
class PushStreamLineReader {
 public:
  static std::unique_ptr<PushStreamLineReader> create(int fd, TextEncoding encoding, qsizetype chunkSize);
  ~PushStreamLineReader();
  PushStreamLineReader(const PushStreamLineReader&) = delete;
  PushStreamLineReader& operator=(const PushStreamLineReader&) = delete;

  std::optional<QString> nextLine();
  void close();

 private:
  PushStreamLineReader(int fd, QByteArray cr, QByteArray lf, TextEncoding encoding, qsizetype chunkSize);
  TextEncoding encoding_;
  qsizetype chunkSize_;
  QByteArray crData_;
  QByteArray lfData_;
  int fd_;
  QByteArray buffer_;
  qsizetype start_ = 0;
  bool atEof_ = false;
};
