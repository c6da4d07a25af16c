#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Visibility.h"

extern "C" TARVO_EXPORT const char* const word[26] = {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m",
                                                      "n", "o", "p", "q", "r", "s", "t", "u", "v", "w", "x", "y", "z"};

extern "C" TARVO_EXPORT const char* const word4CapitalSWF[26] = {"A", "B", "C", "D", "E", "F", "G", "H", "I",
                                                                 "J", "K", "L", "M", "N", "O", "P", "Q", "R",
                                                                 "S", "T", "U", "V", "W", "X", "Y", "Z"};
