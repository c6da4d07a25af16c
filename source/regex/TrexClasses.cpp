// The class letters of the dialect, judged by the C library's classification
// of the byte as an unsigned value (the same on every platform, whatever the
// signedness of char).
#include <cctype>
#include <cstring>

#include "regex/TrexInternal.h"

namespace trex {

bool isClassLetter(unsigned char letter) {
  return letter != '\0' && std::strchr("aAcCdDlpPsSuwWxX", letter) != nullptr;
}

bool classLetterMatches(int32_t letter, unsigned char byte) {
  switch (letter) {
    case 'a': return std::isalpha(byte) != 0;
    case 'A': return std::isalpha(byte) == 0;
    case 'c': return std::iscntrl(byte) != 0;
    case 'C': return std::iscntrl(byte) == 0;
    case 'd': return std::isdigit(byte) != 0;
    case 'D': return std::isdigit(byte) == 0;
    case 'l': return std::islower(byte) != 0;
    case 'p': return std::ispunct(byte) != 0;
    case 'P': return std::ispunct(byte) == 0;
    case 's': return std::isspace(byte) != 0;
    case 'S': return std::isspace(byte) == 0;
    case 'u': return std::isupper(byte) != 0;
    case 'w': return std::isalnum(byte) != 0 || byte == '_';
    case 'W': return std::isalnum(byte) == 0 && byte != '_';
    case 'x': return std::isxdigit(byte) != 0;
    case 'X': return std::isxdigit(byte) == 0;
    default: return false;
  }
}

}  // namespace trex
