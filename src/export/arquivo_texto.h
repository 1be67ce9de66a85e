// Saving text files as the fiscal files need them: Windows-1252, CR LF, written whole or not
// at all.
#pragma once

#include <string>
#include <string_view>

namespace infofiscal {

// UTF-8 to Windows-1252; each code point the code page lacks (U+0081, U+008D, U+008F,
// U+0090 and U+009D included) and each invalid byte becomes one '?'.
std::string utf8_to_windows1252(std::string_view utf8);
// Windows-1252 to UTF-8; the five undefined bytes become U+FFFD.
std::string windows1252_to_utf8(std::string_view bytes);

// Splits the text at CR LF, lone CR or lone LF (LF then CR is two breaks) and joins the lines
// again, each followed by CR LF: a final break opens no empty line, an empty text stays empty.
std::string normalize_line_breaks(std::string_view text);

// Writes `bytes` to `path` through a temporary file in the same folder, renamed over `path`
// only when complete: a failure leaves any earlier file as it was and no temporary behind.
// The folder must exist; it is not created. Throws Error naming the file.
void write_file_atomically(const std::string& path, std::string_view bytes);

// Saves the text as a string list saves it: lines normalized as above, Windows-1252, CR LF,
// atomically. Returns the saved text read back as UTF-8 (a character the code page lacks is a
// '?' there too): that is what the converter is given.
std::string save_text_file(const std::string& path, std::string_view text);

}  // namespace infofiscal
