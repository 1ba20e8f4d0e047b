#pragma once

#include <string>

namespace sonalyx {

// Writes the parameter sheet of the document `in` to `out`, by its extension: .txt (the sheet
// text), .png, .svg or .pdf (vectors). memory 0 is all memories, 1..6 one memory. page 0 draws
// the screen sheet (silver on black); page 1..pages draws that print page (black on white).
// Returns the exit status: 0 done, 1 failed with the program's message on stderr.
int renderParameterSheet(const std::string& in, const std::string& out, int memory, int page,
                         int pages);

}  // namespace sonalyx
