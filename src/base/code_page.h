// The code pages of the files: the information file is Windows-1252, the text the program
// works with is UTF-8. Lines end with CR LF in every file written.
#pragma once

#include <string>
#include <string_view>

namespace infofiscal {

// The conversions are the code page's own table, the same on every system: they give the bytes
// glibc's iconv gave on Linux (CP1252, without transliteration), which the files written before
// were made with.

// UTF-8 to Windows-1252, appended piece by piece. REQUIRES: pieces split the text between whole
// UTF-8 characters.
class Windows1252 {
 public:
  // Appends `utf8` in Windows-1252 to `out`; as utf8_to_windows1252 below.
  void append(std::string_view utf8, std::string& out);
};

// Windows-1252 to UTF-8, appended piece by piece (any split: the code page has one byte a
// character).
class Utf8FromWindows1252 {
 public:
  // Appends `bytes` in UTF-8 to `out`; as windows1252_to_utf8 below.
  void append(std::string_view bytes, std::string& out);
};

// UTF-8 to Windows-1252; each code point the code page lacks (U+0081, U+008D, U+008F,
// U+0090 and U+009D included) becomes one '?'. So does each broken sequence (overlong, cut, a
// surrogate, a stray byte): its '?' stands for as many bytes as its first byte announces, but
// never for an ASCII byte after it. The invisible language tags U+E0000 to U+E007F (the tail of
// a flag such as Scotland's) are left out, as iconv leaves them out.
std::string utf8_to_windows1252(std::string_view utf8);
// Windows-1252 to UTF-8; the five undefined bytes become U+FFFD.
std::string windows1252_to_utf8(std::string_view bytes);

// Splits the text at CR LF, lone CR or lone LF (LF then CR is two breaks) and joins the lines
// again, each followed by CR LF: a final break opens no empty line, an empty text stays empty.
std::string normalize_line_breaks(std::string_view text);

// Turns text into the saved bytes piece by piece, with the same result as
// utf8_to_windows1252(normalize_line_breaks(whole text)). REQUIRES: pieces split the text
// between whole UTF-8 characters.
class TextEncoder {
 public:
  // Appends the bytes of `piece` to `out`.
  void feed(std::string_view piece, std::string& out);
  // Appends what the end of the text adds (the last line's CR LF when it had no break).
  void finish(std::string& out);

 private:
  Windows1252 encoder_;
  bool after_cr_ = false;    // the last character fed was a CR
  bool line_open_ = false;   // characters fed since the last break
};

// ---- Characters a file's code page lacks

// Decodes the UTF-8 character at `i` and moves `i` past it; an invalid byte gives U+FFFD and
// moves one byte. REQUIRES: i < text.size().
char32_t next_code_point(std::string_view text, std::size_t& i);

// The customary plain form of a character that ISO-8859-1 and ASCII lack: typographic quotes
// to '"' and '\'', dashes to '-', the ellipsis to "...", the euro sign to "EUR", the trade mark
// sign to "TM"; and of the signs of Latin-1 that ASCII lacks ("²" to "2", "º" to "o", "½" to
// "1/2"). Empty when the table has none. The program's one table of transliterations.
std::string_view transliteration(char32_t c);

// UTF-8 to ISO-8859-1 (Latin-1), appended to `out`: a character of the code page as its byte,
// one it lacks by its transliteration, else '?'; the C1 controls U+0080-U+009F, which no text
// of the code page uses, also become '?'. REQUIRES: `utf8` holds whole characters.
void append_latin1(std::string_view utf8, std::string& out);

}  // namespace infofiscal
