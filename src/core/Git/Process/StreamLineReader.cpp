#include "Git/Process/StreamLineReader.h"

#include <cerrno>
#include <unistd.h>

namespace {

// Reads up to chunkSize bytes, retrying on EINTR. Returns the count, 0 at end (or error).
qsizetype readChunk(int fd, QByteArray& buffer, qsizetype& start, qsizetype chunkSize) {
  if (fd < 0) return 0;
  // Drop delivered bytes before growing, so the buffer stays near one chunk plus a line.
  if (start > 0) {
    buffer.remove(0, start);
    start = 0;
  }
  const qsizetype oldSize = buffer.size();
  buffer.resize(oldSize + chunkSize);
  ssize_t n;
  do {
    n = ::read(fd, buffer.data() + oldSize, static_cast<size_t>(chunkSize));
  } while (n < 0 && errno == EINTR);
  buffer.resize(oldSize + (n > 0 ? n : 0));
  return n > 0 ? n : 0;
}

}  // namespace

std::unique_ptr<StreamLineReader> StreamLineReader::create(int fd, const QString& delimiter, TextEncoding encoding, qsizetype chunkSize) {
  auto delim = encodeString(delimiter, encoding);
  if (!delim || delim->isEmpty()) {
    if (fd >= 0) ::close(fd);
    return nullptr;
  }
  return std::unique_ptr<StreamLineReader>(new StreamLineReader(fd, *delim, encoding, chunkSize));
}

StreamLineReader::StreamLineReader(int fd, QByteArray delimiter, TextEncoding encoding, qsizetype chunkSize)
    : encoding_(encoding), chunkSize_(chunkSize > 0 ? chunkSize : 4096), delimData_(std::move(delimiter)), fd_(fd) {
  buffer_.reserve(chunkSize_);
}

StreamLineReader::~StreamLineReader() { close(); }

void StreamLineReader::close() {
  if (fd_ >= 0) {
    ::close(fd_);
    fd_ = -1;
  }
}

// Finds the next line and gives its bytes as a view into the buffer, valid until the
// next call; decoding straight from the buffer saves a copy per line.
bool StreamLineReader::nextLineView(const char*& data, qsizetype& size) {
  if (atEof_) return false;
  qsizetype searchFrom = start_;
  while (true) {
    const qsizetype p = buffer_.indexOf(delimData_, searchFrom);
    if (p >= 0) {
      data = buffer_.constData() + start_;
      size = p - start_;
      start_ = p + delimData_.size();
      return true;
    }
    // Resume the search where a delimiter could still begin.
    const qsizetype pendingBefore = buffer_.size() - start_;
    if (readChunk(fd_, buffer_, start_, chunkSize_) == 0) {
      atEof_ = true;
      if (buffer_.size() > start_) {
        // The last line has no delimiter; keep its bytes until the next call.
        tail_ = QByteArray(buffer_.constData() + start_, buffer_.size() - start_);
        buffer_.clear();
        start_ = 0;
        data = tail_.constData();
        size = tail_.size();
        return true;
      }
      buffer_.clear();
      start_ = 0;
      return false;
    }
    searchFrom = std::max<qsizetype>(0, pendingBefore - delimData_.size() + 1);
  }
}

std::optional<QByteArray> StreamLineReader::nextLineBytes() {
  const char* data = nullptr;
  qsizetype size = 0;
  if (!nextLineView(data, size)) return std::nullopt;
  return QByteArray(data, size);
}

std::optional<QString> StreamLineReader::nextLine() {
  const char* data = nullptr;
  qsizetype size = 0;
  if (!nextLineView(data, size)) return std::nullopt;
  return decodeString(data, size, encoding_);
}

std::unique_ptr<PushStreamLineReader> PushStreamLineReader::create(int fd, TextEncoding encoding, qsizetype chunkSize) {
  auto cr = encodeString(QStringLiteral("\r"), encoding);
  auto lf = encodeString(QStringLiteral("\n"), encoding);
  if (!cr || !lf) {
    if (fd >= 0) ::close(fd);
    return nullptr;
  }
  return std::unique_ptr<PushStreamLineReader>(new PushStreamLineReader(fd, *cr, *lf, encoding, chunkSize));
}

PushStreamLineReader::PushStreamLineReader(int fd, QByteArray cr, QByteArray lf, TextEncoding encoding, qsizetype chunkSize)
    : encoding_(encoding), chunkSize_(chunkSize > 0 ? chunkSize : 16), crData_(std::move(cr)), lfData_(std::move(lf)), fd_(fd) {
  buffer_.reserve(chunkSize_);
}

PushStreamLineReader::~PushStreamLineReader() { close(); }

void PushStreamLineReader::close() {
  if (fd_ >= 0) {
    ::close(fd_);
    fd_ = -1;
  }
}

std::optional<QString> PushStreamLineReader::nextLine() {
  if (atEof_) return std::nullopt;
  while (true) {
    qsizetype p = -1;
    qsizetype n = 0;
    const qsizetype cr = buffer_.indexOf(crData_, start_);
    if (cr >= 0) {
      const qsizetype lf = buffer_.indexOf(lfData_, start_);
      if (lf >= 0 && lf < cr) {
        p = lf;
        n = lfData_.size();
      } else {
        p = cr;
        n = crData_.size();
      }
    } else {
      p = buffer_.indexOf(lfData_, start_);
      n = lfData_.size();
    }
    if (p >= 0) {
      auto text = decodeString(buffer_.constData() + start_, p - start_, encoding_);
      start_ = p + n;
      return text;
    }
    if (readChunk(fd_, buffer_, start_, chunkSize_) == 0) {
      atEof_ = true;
      std::optional<QString> last;
      if (buffer_.size() > start_) last = decodeString(buffer_.constData() + start_, buffer_.size() - start_, encoding_);
      buffer_.clear();
      start_ = 0;
      return last;
    }
  }
}
