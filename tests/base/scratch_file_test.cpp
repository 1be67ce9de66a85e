// The files a converter writes through: the scratch file for what does not fit in memory, the
// atomic file read back before it is committed, and the code page decoded a piece at a time.
#include <filesystem>

#include <gtest/gtest.h>

#include "base/atomic_file.h"
#include "base/code_page.h"
#include "base/error.h"
#include "support/cli.h"

namespace infofiscal {
namespace {

namespace fs = std::filesystem;

std::string le(const auto& arquivo, std::uint64_t pos, std::size_t n) {
  std::string s(n, '\0');
  s.resize(arquivo.read_at(pos, s.data(), n));
  return s;
}

TEST(ScratchFile, KeepsWhatIsAppendedAndLeavesNothingBehind) {
  const std::string dir = testing::fresh_dir("scratch");
  {
    ScratchFile f(dir);
    f.append("abc");
    f.append(std::string(100000, 'x') + "fim");
    EXPECT_EQ(f.size(), 100006u);
    EXPECT_EQ(le(f, 0, 4), "abcx");
    EXPECT_EQ(le(f, 100000, 100), "xxxfim") << "a read past the end stops there";
    EXPECT_EQ(le(f, 200000, 10), "");
#ifdef _WIN32
    // Windows makes no file without a name: a hidden one, which the system removes at the close.
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 1);
#else
    EXPECT_TRUE(fs::is_empty(dir)) << "the file has no name in the folder";
#endif
  }
  EXPECT_TRUE(fs::is_empty(dir));
  try {
    ScratchFile f(dir + "/sumiu");
    ADD_FAILURE();
  } catch (const Error& e) {
    EXPECT_EQ(e.what(), "Não foi possível usar um arquivo temporário na pasta '" + dir +
                            "/sumiu': arquivo ou pasta inexistente");
  }
}

TEST(AtomicFile, ReadsBackWhatWasWrittenBeforeTheCommit) {
  const std::string dir = testing::fresh_dir("atomic-read");
  AtomicFile f(dir + "/f.txt");
  f.write("linha 1\r\n");
  f.write("linha 2\r\n");
  EXPECT_EQ(le(f, 7, 100), "\r\nlinha 2\r\n");
  f.commit();
  EXPECT_EQ(testing::read_file(dir + "/f.txt"), "linha 1\r\nlinha 2\r\n");
}

// Decoding a piece at a time gives the text decoded whole, wherever the pieces are cut.
TEST(CodePage, Windows1252DecodedPieceByPiece) {
  const std::string bytes = "Informa\xE7\xE3o \x80 \x81 S\xE3o Paulo \xC1gua";
  const std::string inteiro = windows1252_to_utf8(bytes);
  EXPECT_EQ(inteiro, "Informação € \xEF\xBF\xBD São Paulo Água");
  for (std::size_t corte = 0; corte <= bytes.size(); ++corte) {
    Utf8FromWindows1252 utf8;
    std::string out;
    utf8.append(std::string_view(bytes).substr(0, corte), out);
    utf8.append(std::string_view(bytes).substr(corte), out);
    EXPECT_EQ(out, inteiro) << corte;
  }
}

}  // namespace
}  // namespace infofiscal
