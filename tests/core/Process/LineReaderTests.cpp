#include <gtest/gtest.h>
#include <unistd.h>

#include <thread>

#include "Git/Process/StreamLineReader.h"
#include "Git/Process/TextEncoding.h"

namespace {

// A pipe whose write end is filled by a thread, so readers meet real partial reads.
int pipeWith(const QByteArray& bytes, int chunk = 0) {
  int fds[2];
  EXPECT_EQ(::pipe(fds), 0);
  std::thread([fd = fds[1], bytes, chunk] {
    qsizetype off = 0;
    const qsizetype step = chunk > 0 ? chunk : bytes.size();
    while (off < bytes.size()) {
      const qsizetype n = std::min(step, bytes.size() - off);
      if (::write(fd, bytes.constData() + off, static_cast<size_t>(n)) < 0) break;
      off += n;
    }
    ::close(fd);
  }).detach();
  return fds[0];
}

std::vector<QString> readAllLines(const QByteArray& bytes, qsizetype chunk, int writeChunk = 0) {
  auto reader = StreamLineReader::create(pipeWith(bytes, writeChunk), QStringLiteral("\n"), TextEncoding::utf8, chunk);
  std::vector<QString> lines;
  while (auto line = reader->nextLine()) lines.push_back(*line);
  EXPECT_FALSE(reader->nextLine().has_value()) << "a reader at its end stays there";
  return lines;
}

std::vector<QString> readAllPushLines(const QByteArray& bytes, qsizetype chunk) {
  auto reader = PushStreamLineReader::create(pipeWith(bytes, 3), TextEncoding::utf8, chunk);
  std::vector<QString> lines;
  while (auto line = reader->nextLine()) lines.push_back(*line);
  return lines;
}

using Lines = std::vector<QString>;

}  // namespace

TEST(StreamLineReader, SplitsAtLineFeedsAndDeliversUnterminatedLastLine) {
  for (qsizetype chunk : {1, 2, 3, 4096}) {
    SCOPED_TRACE(chunk);
    EXPECT_EQ(readAllLines("", chunk), Lines{});
    EXPECT_EQ(readAllLines("a\nb", chunk), (Lines{"a", "b"}));
    EXPECT_EQ(readAllLines("a\n", chunk), Lines{"a"});
    EXPECT_EQ(readAllLines("\n\n", chunk), (Lines{"", ""}));
    EXPECT_EQ(readAllLines("one\r\ntwo\n", chunk), (Lines{"one\r", "two"}));
  }
}

TEST(StreamLineReader, MultiByteDelimiterAcrossChunkBoundaries) {
  auto reader = StreamLineReader::create(pipeWith(QByteArray("x\0\0y\0\0\0\0z", 9), 1), QString(QChar(0)) + QChar(0),
                                         TextEncoding::utf8, 1);
  ASSERT_TRUE(reader);
  EXPECT_EQ(reader->nextLine(), QStringLiteral("x"));
  EXPECT_EQ(reader->nextLine(), QStringLiteral("y"));
  EXPECT_EQ(reader->nextLine(), QStringLiteral(""));
  EXPECT_EQ(reader->nextLine(), QStringLiteral("z"));
  EXPECT_FALSE(reader->nextLine());
}

TEST(StreamLineReader, InvalidUtf8LineFallsBackToLatin1AndNextLineIsUtf8Again) {
  const QByteArray bytes = QByteArray("caf\xe9\n") + QString::fromUtf8("café\n").toUtf8();
  const Lines lines = readAllLines(bytes, 4);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], QStringLiteral("caf") + QChar(0xE9));
  EXPECT_EQ(lines[1], QString::fromUtf8("café"));
}

TEST(StreamLineReader, UndecodableDelimiterGivesNoReader) {
  int fds[2];
  ASSERT_EQ(::pipe(fds), 0);
  ::close(fds[1]);
  EXPECT_EQ(StreamLineReader::create(fds[0], QStringLiteral("€"), TextEncoding::isoLatin1, 16), nullptr);
}

TEST(PushStreamLineReader, CarriageReturnsEndLinesAndPairsAreNotFolded) {
  EXPECT_EQ(readAllPushLines("a\r\nb", 16), (Lines{"a", "", "b"}));
  EXPECT_EQ(readAllPushLines("10%\r20%\r", 16), (Lines{"10%", "20%"}));
  EXPECT_EQ(readAllPushLines("x\ny\rz", 2), (Lines{"x", "y", "z"}));
  EXPECT_EQ(readAllPushLines("", 16), Lines{});
}
