// Names of the tag codes, for diagnostics.
#include "swf/DeAssembler.h"

namespace {

struct TagName {
  int32_t code;
  const char* name;
};

const TagName kTagNames[] = {
    {0, "TAG_END"},
    {1, "TAG_SHOWFRAME"},
    {2, "TAG_DEFINESHAPE"},
    {3, "TAG_FREECHARACTER"},
    {4, "TAG_PLACEOBJECT"},
    {5, "TAG_REMOVEOBJECT"},
    {6, "TAG_DEFINEBITS"},
    {7, "TAG_DEFINEBUTTON"},
    {8, "TAG_JPEGTABLES"},
    {9, "TAG_SETBACKGROUNDCOLOR"},
    {10, "TAG_DEFINEFONT"},
    {11, "TAG_DEFINETEXT"},
    {12, "TAG_DOACTION"},
    {13, "TAG_DEFINEFONTINFO"},
    {14, "TAG_DEFINESOUND"},
    {15, "TAG_STARTSOUND"},
    {16, "TAG_STOPSOUND"},
    {17, "TAG_DEFINEBUTTONSOUND"},
    {18, "TAG_SOUNDSTREAMHEAD"},
    {19, "TAG_SOUNDSTREAMBLOCK"},
    {20, "TAG_DEFINEBITSLOSSLESS"},
    {21, "TAG_DEFINEBITSJPEG2"},
    {22, "TAG_DEFINESHAPE2"},
    {23, "TAG_DEFINEBUTTONCXFORM"},
    {24, "TAG_PROTECT"},
    {25, "TAG_PATHSAREPOSTSCRIPT"},
    {26, "TAG_PLACEOBJECT2"},
    {28, "TAG_REMOVEOBJECT2"},
    {29, "TAG_SYNCFRAME"},
    {31, "TAG_FREEALL"},
    {32, "TAG_DEFINESHAPE3"},
    {33, "TAG_DEFINETEXT2"},
    {34, "TAG_DEFINEBUTTON2"},
    {35, "TAG_DEFINEBITSJPEG3"},
    {36, "TAG_DEFINEBITSLOSSLESS2"},
    {37, "TAG_DEFINEEDITTEXT"},
    {38, "TAG_DEFINEVIDEO"},
    {39, "TAG_DEFINEMOVIECLIP"},
    {40, "TAG_NAMECHARACTER"},
    {41, "TAG_SERIALNUMBER"},
    {42, "TAG_DEFINETEXTFORMAT"},
    {43, "TAG_FRAMELABEL"},
    {45, "TAG_SOUNDSTREAMHEAD2"},
    {46, "TAG_DEFINEMORPHSHAPE"},
    {47, "TAG_GENFRAME"},
    {48, "TAG_DEFINEFONT2"},
    {49, "TAG_GENCOMMAND"},
    {50, "TAG_DEFINECOMMANDOBJ"},
    {51, "TAG_CHARACTERSET"},
    {52, "TAG_FONTREF"},
    {56, "TAG_EXPORTASSETS"},
    {57, "TAG_IMPORTASSETS"},
    {58, "TAG_ENABLEDEBUGGER"},
    {59, "TAG_INITMOVIECLIP"},
    {60, "TAG_DEFINEVIDEOSTREAM"},
    {61, "TAG_VIDEOFRAME"},
    {62, "TAG_DEFINEFONTINFO2"},
    {64, "TAG_ENABLEDEBUGGER2"},
    {65, "TAG_SCRIPTLIMITS"},
    {66, "TAG_SETTABINDEX"},
    {67, "TAG_DEFINESHAPE4"},
    {69, "TAG_FILEATTRIBUTES"},
    {70, "TAG_PLACEOBJECT3"},
    {71, "TAG_IMPORTASSETS2"},
    {73, "TAG_DEFINEFONTINFO3"},
    {74, "TAG_DEFINETEXTINFO"},
    {75, "TAG_DEFINEFONT3"},
    {77, "TAG_METADATA"},
    {78, "TAG_SLICE9"},
    {83, "TAG_DEFINESHAPE5"},
    {84, "TAG_DEFINEMORPHSHAPE2"},
    {1023, "TAG_DEFINEBITSPTR"},
};

}  // namespace

const char* DeAssembler::getTagStr(int32_t code) {
  for (const TagName& entry : kTagNames) {
    if (entry.code == code) return entry.name;
  }
  return nullptr;
}
