#include "editor/control/keyword_list.h"

namespace korvant {

const char kKeywordList[] =
    "and bits bits8 bits16 bits32 bool break case class const continue default do double "
    "else false float for from if import in inout int int8 int16 int32 int64 not null or out "
    "return string struct switch this true uint uint8 uint16 uint32 void while xor "
    "OpenInputFile CloseInputFile OpenOutputFile CloseOutputFile Print Input Inkey Clear "
    "SetTextColor SetTextBold ResetText GoToXY SetMaxRunTime GetSystemTime Prompt Question "
    "Information Warning Error Progress StrSize StrFind StrRevFind StrInsert StrSubstring "
    "StrChr StrAsc StrTrim StrToUpper StrToLower acos asin atan atan2 ceil cos cosh exp fabs "
    "floor fmod log log10 pow sin sinh sqrt tan tanh hypot j0 j1 jn y0 y1 yn GetCookie "
    "SetCookie ClearCookies DeleteCookie Dialog ResetHole ResetSurvey ResetAssay ResetValue "
    "ResetDefinition ResetLithology ResetRQD ResetGeochemistry ResetAlteration "
    "ResetMineralization ResetStructure GetNextHole GetNextSurvey GetNextAssay GetNextValue "
    "GetNextDefinition GetNextLithology GetNextRQD GetNextGeochemistry GetNextAlteration "
    "GetNextMineralization GetNextStructure SetLithologyColor SetGeochemistryColor "
    "SetAlterationColor SetMineralizationColor SetStructureColor DeleteAllIntervals "
    "CreateInterval SetAssayValue GetCurrentHoleIndex GetCurrentDefinitionIndex "
    "SetCurrentHoleIndex SetCurrentDefinitionIndex ResetBlock ResetComposite "
    "GetBlocksMaxIndex GetBlockCenter GetBlockIndex GetBlock GetNextBlock GetValueIndex "
    "GetBlockValue SetBlockValue GetNextComposite GetCompositeValue";

static_assert(sizeof kKeywordList - 1 == 1456);

}  // namespace korvant
