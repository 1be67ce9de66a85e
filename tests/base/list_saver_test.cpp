#include "base/list_saver.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "base/string_list.h"
#include "base/error.h"
#include "faults/support.h"

namespace infofiscal {
namespace {

namespace fs = std::filesystem;

std::string read(const fs::path& p) {
  std::ifstream in(p, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

TEST(ArquivoTexto, Windows1252WritesOneQuestionMarkPerMissingCodePoint) {
  const struct {
    const char* utf8;
    const char* bytes;
  } cases[] = {
      {"Informação", "Informa\xE7\xE3o"},
      {"€ – “x” …", "\x80 \x96 \x93x\x94 \x85"},
      {"\u0081\u008D\u008F\u0090\u009D", "?????"},
      {"日本", "??"},
      {"😀a", "?a"},
      {"\U0001F3F4\U000E0067\U000E0062\U000E0073\U000E0063\U000E0074\U000E007Fz", "?z"},  // tags left out
      {"\xFF\xFEz", "??z"},  // invalid bytes
      {"0123456789çabcdefgh€ijklmnopq😀", "0123456789\xE7" "abcdefgh\x80ijklmnopq?"},  // long ASCII runs
      {"", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(utf8_to_windows1252(c.utf8), c.bytes) << c.utf8;
  EXPECT_EQ(windows1252_to_utf8("Informa\xE7\xE3o \x80"), "Informação €");
}

TEST(ArquivoTexto, LineBreaksBecomeCrLf) {
  const struct {
    const char* text;
    const char* saved;
  } cases[] = {
      {"", ""},
      {"a", "a\r\n"},
      {"a\r\n", "a\r\n"},
      {"a\r\nb\r\n", "a\r\nb\r\n"},
      {"a\nb", "a\r\nb\r\n"},
      {"a\rb", "a\r\nb\r\n"},
      {"a\n\rb", "a\r\n\r\nb\r\n"},  // LF then CR is two breaks
      {"a\r\n\r\n", "a\r\n\r\n"},
      {"\r\n", "\r\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(normalize_line_breaks(c.text), c.saved) << c.text;
}

TEST(ArquivoTexto, SaveReplacesWholeAndReturnsTheSavedText) {
  const fs::path dir = fs::path(::testing::TempDir()) / "arquivo_texto_salvar";
  fs::remove_all(dir);
  fs::create_directories(dir);
  const std::string path = (dir / "SpedInformacao.txt").string();
  EXPECT_EQ(save_text_file(path, "Situação\n日"), "Situação\r\n?\r\n");
  EXPECT_EQ(read(path), "Situa\xE7\xE3o\r\n?\r\n");
  save_text_file(path, "");
  EXPECT_EQ(read(path), "");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 1);  // no temporary left
}

TEST(ArquivoTexto, FailuresLeaveTheEarlierFileAndNoTemporary) {
  const fs::path dir = fs::path(::testing::TempDir()) / "arquivo_texto_falha";
  fs::remove_all(dir);
  fs::create_directories(dir);
  const std::string path = (dir / "SpedInformacao.txt").string();
  save_text_file(path, "anterior");

  try {
    write_file_atomically((dir / "nao-existe" / "x.txt").string(), "novo");
    FAIL();
  } catch (const Error& e) {
    EXPECT_EQ(std::string(e.what()), "A pasta '" + (dir / "nao-existe").string() + "' não existe: o arquivo '" +
                                         (dir / "nao-existe" / "x.txt").string() + "' não foi gravado");
  }
  // A target that is a folder cannot be replaced: the rename fails after the write.
  fs::create_directories(dir / "pasta");
  EXPECT_THROW(write_file_atomically((dir / "pasta").string(), "novo"), Error);
  if (testing::pastas_somente_leitura_valem()) {
    fs::permissions(dir, fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_THROW(save_text_file(path, "novo"), Error);
    fs::permissions(dir, fs::perms::owner_all);
  }
  EXPECT_EQ(read(path), "anterior\r\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 2);
}

}  // namespace
}  // namespace infofiscal

namespace infofiscal {
namespace {

TEST(ArquivoTexto, PiecewiseEncodingEqualsTheWholeText) {
  const std::string text = "a\r\nç\n\rb\rc\r\n\r\nd€\u0081";
  for (std::size_t cut = 0; cut <= text.size(); ++cut) {
    if (cut < text.size() && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) continue;  // mid-character
    TextEncoder c;
    std::string out;
    c.feed(std::string_view(text).substr(0, cut), out);
    c.feed(std::string_view(text).substr(cut), out);
    c.finish(out);
    EXPECT_EQ(out, utf8_to_windows1252(normalize_line_breaks(text))) << cut;
  }
}

// Fills a list of blocks larger than the saver's pieces (a megabyte), so that pieces end within
// blocks, with lines mostly of two-byte characters and one line longer than a piece.
void fill(TStringList& list) {
  for (int i = 0; i < 120000; ++i) {
    list.Add("[C00]06[/C00][C01]" + std::to_string(i) + "[/C01]çãçãçãçãçãção[C99]38[/C99]");
    if (i == 30000) {
      std::string longa;
      for (int c = 0; c < 600000; ++c) longa += "ç";
      list.Add(longa);
    }
  }
}

TEST(ArquivoTexto, AListSavedWhileItIsFilledSavesAsItsText) {
  const fs::path dir = fs::path(::testing::TempDir()) / "arquivo_texto_lista";
  fs::remove_all(dir);
  fs::create_directories(dir);
  const std::string path = (dir / "SpedInformacao.txt").string();
  for (const bool keep_text : {true, false}) {
    TStringList list(std::size_t{3} << 20);
    ListSaver gravacao(path, list, keep_text);
    list.Clear();  // as a run starts
    fill(list);
    ASSERT_GT(list.Blocks().size(), 2u);
    EXPECT_EQ(list[120000], "[C00]06[/C00][C01]119999[/C01]çãçãçãçãçãção[C99]38[/C99]");
    const std::string text = list.Text();
    const std::size_t lines = list.Count();
    EXPECT_TRUE(gravacao.finish() == (keep_text ? text : std::string()));
    EXPECT_EQ(gravacao.lines(), lines);
    EXPECT_EQ(list.Count(), 0u);
    gravacao.commit();
    EXPECT_TRUE(read(path) == utf8_to_windows1252(text));
  }
  // A list filled before the saver came: all of it is written at the end.
  TStringList list;
  list.Add("anterior");
  ListSaver gravacao(path, list, true);
  EXPECT_EQ(gravacao.finish(), "anterior\r\n");
  gravacao.commit();
  EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 1);  // no temporary left
}

TEST(ArquivoTexto, AListWhoseRunFailsOrCannotBeSavedLeavesTheEarlierFile) {
  const fs::path dir = fs::path(::testing::TempDir()) / "arquivo_texto_lista_falha";
  fs::remove_all(dir);
  fs::create_directories(dir);
  const std::string path = (dir / "SpedInformacao.txt").string();
  save_text_file(path, "anterior");
  {
    // A run that fails after blocks were written: the saver goes without commit.
    TStringList list(std::size_t{3} << 20);
    ListSaver gravacao(path, list, false);
    fill(list);
  }
  {
    // A run cancelled after its file was finished, while the converter ran.
    TStringList list(std::size_t{3} << 20);
    ListSaver gravacao(path, list, true);
    fill(list);
    EXPECT_FALSE(gravacao.finish().empty());
  }
  // A folder that does not exist: the run goes on, the save says why it could not be done.
  const fs::path missing = dir / "nao-existe" / "SpedInformacao.txt";
  TStringList list(std::size_t{3} << 20);
  ListSaver gravacao(missing.string(), list, false);
  fill(list);
  try {
    gravacao.finish();
    FAIL();
  } catch (const Error& e) {
    EXPECT_EQ(std::string(e.what()), "A pasta '" + missing.parent_path().string() + "' não existe: o arquivo '" +
                                         missing.string() + "' não foi gravado");
  }
  EXPECT_EQ(read(path), "anterior\r\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 1);
}

}  // namespace
}  // namespace infofiscal
