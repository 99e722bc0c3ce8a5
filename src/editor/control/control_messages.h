// The messages, values and notifications of the editing control that the editor uses.
// Source: Scintilla 3.7.2, Scintilla.iface. No headers of the control are installed with the
// toolkit, so this is the one place that knows the numbers.
#pragma once

#include <cstdint>

namespace korvant::sci {

/// Messages.
enum Message : unsigned {
    kAddText = 2001,
    kClearAll = 2004,
    kGetLength = 2006,
    kGetCharAt = 2007,
    kGetCurrentPos = 2008,
    kGetAnchor = 2009,
    kGetStyleAt = 2010,
    kMoveSelectedLinesUp = 2620,
    kMoveSelectedLinesDown = 2621,
    kRedo = 2011,
    kSetUndoCollection = 2012,
    kSelectAll = 2013,
    kCanRedo = 2016,
    kGotoLine = 2024,
    kGotoPos = 2025,
    kGetEndStyled = 2028,
    kConvertEols = 2029,
    kSetEolMode = 2031,
    kStartStyling = 2032,
    kSetTabWidth = 2036,
    kSetCodePage = 2037,
    kMarkerDefine = 2040,
    kMarkerSetFore = 2041,
    kMarkerSetBack = 2042,
    kMarkerAdd = 2043,
    kMarkerDelete = 2044,
    kMarkerDeleteAll = 2045,
    kMarkerGet = 2046,
    kMarkerNext = 2047,
    kMarkerPrevious = 2048,
    kStyleClearAll = 2050,
    kStyleSetFore = 2051,
    kStyleSetBack = 2052,
    kStyleSetSize = 2055,
    kStyleSetFont = 2056,
    kSetSelFore = 2067,
    kSetSelBack = 2068,
    kSetCaretFore = 2069,
    kBeginUndoAction = 2078,
    kEndUndoAction = 2079,
    kSetStyleBits = 2090,
    kSetCaretLineVisible = 2096,
    kSetCaretLineVisibleAlways = 2655,
    kSetScrollWidth = 2274,
    kSetScrollWidthTracking = 2516,
    kSetCaretLineBack = 2098,
    kAutoCShow = 2100,
    kAutoCCancel = 2101,
    kAutoCActive = 2102,
    kAutoCSetIgnoreCase = 2115,
    kAutoCSetMaxHeight = 2210,
    kSetIndentationGuides = 2132,
    kGetLineEndPosition = 2136,
    kSetMarginLeft = 2155,
    kGetSelectionStart = 2143,
    kGetSelectionEnd = 2145,
    kFindText = 2150,
    kGetFirstVisibleLine = 2152,
    kGetLineCount = 2154,
    kSetSel = 2160,
    kGetSelText = 2161,
    kGetTextRange = 2162,
    kLineFromPosition = 2166,
    kPositionFromLine = 2167,
    kLineScroll = 2168,
    kCanUndo = 2174,
    kEmptyUndoBuffer = 2175,
    kSetSavePoint = 2014,
    kGetModify = 2159,
    kUndo = 2176,
    kCut = 2177,
    kCopy = 2178,
    kPaste = 2179,
    kSetText = 2181,
    kGetText = 2182,
    kGetTextLength = 2183,
    kSetTargetStart = 2190,
    kGetTargetStart = 2191,
    kSetTargetEnd = 2192,
    kGetTargetEnd = 2193,
    kReplaceTarget = 2194,
    kReplaceTargetRe = 2195,
    kSearchInTarget = 2197,
    kCallTipShow = 2200,
    kCallTipCancel = 2201,
    kCallTipActive = 2202,
    kCallTipSetHlt = 2204,
    kCallTipSetBack = 2205,
    kCallTipSetFore = 2206,
    kCallTipSetForeHlt = 2207,
    kVisibleFromDocLine = 2220,
    kDocLineFromVisible = 2221,
    kSetFoldLevel = 2222,
    kGetFoldLevel = 2223,
    kToggleFold = 2231,
    kFoldLine = 2237,
    kSetFirstVisibleLine = 2613,
    kContractedFoldNext = 2618,
    kEnsureVisible = 2232,
    kSetFoldFlags = 2233,
    kSetMarginWidthN = 2242,
    kSetFoldMarginColour = 2290,
    kSetFoldMarginHiColour = 2291,
    kGetMarginWidthN = 2243,
    kSetMarginMaskN = 2244,
    kSetMarginSensitiveN = 2246,
    kSetMouseDwellTime = 2264,
    kSetWrapMode = 2268,
    kWordStartPosition = 2266,
    kWordEndPosition = 2267,
    kTextWidth = 2276,
    kTargetFromSelection = 2287,
    kZoomIn = 2333,
    kZoomOut = 2334,
    kBraceHighlight = 2351,
    kBraceMatch = 2353,
    kGetDocPointer = 2357,
    kSetDocPointer = 2358,
    kSetModEventMask = 2359,
    kUsePopUp = 2371,
    kSetZoom = 2373,
    kGetZoom = 2374,
    kCreateDocument = 2375,
    kAddRefDocument = 2376,
    kReleaseDocument = 2377,
    kSetStatus = 2382,
    kGetStatus = 2383,
    kSetXOffset = 2397,
    kGetXOffset = 2398,
    kSetExtraAscent = 2525,
    kSetExtraDescent = 2527,
    kAutoCSetOrder = 2660,
    kCountCharacters = 2633,
    kPositionRelative = 2670,
    kSetAutomaticFold = 2663,
    kSetLexer = 4001,
    kColourise = 4003,
    kSetProperty = 4004,
    kSetKeywords = 4005,
    kGetPropertyInt = 4010,
};

/// Notifications.
enum Notification : unsigned {
    kCharAdded = 2001,
    kDoubleClick = 2006,
    kUpdateUi = 2007,
    kModified = 2008,
    kMarginClick = 2010,
    kDwellStart = 2016,
    kDwellEnd = 2017,
    kZoom = 2018,
    kCallTipClick = 2021,
};

inline constexpr int kModInsertText = 1, kModDeleteText = 2;
inline constexpr std::uint32_t kFindWholeWord = 2, kFindMatchCase = 4, kFindRegExp = 0x200000;
inline constexpr int kMarkCircle = 0, kMarkArrow = 2, kMarkShortArrow = 4, kMarkEmpty = 5,
                     kMarkMinus = 7, kMarkPlus = 8, kMarkCharacter = 10000;
inline constexpr int kMarkNumFolderEnd = 25, kMarkNumFolderOpenMid = 26, kMarkNumFolderMidTail = 27,
                     kMarkNumFolderTail = 28, kMarkNumFolderSub = 29, kMarkNumFolder = 30,
                     kMarkNumFolderOpen = 31;
inline constexpr int kStyleDefault = 32, kStyleLineNumber = 33, kStyleBraceLight = 34;
inline constexpr int kEolLf = 2;
inline constexpr int kCodePageUtf8 = 65001;
inline constexpr int kWrapWords = 1;
inline constexpr int kLexerCpp = 3;
/// From here on a status is a warning (a regular expression that does not read).
inline constexpr int kStatusWarnStart = 1000;
inline constexpr int kOrderPerformSort = 1;

/// A colour as the control takes it.
constexpr std::intptr_t rgb(int red, int green, int blue) {
    return red | green << 8 | blue << 16;
}

/// What kFindText reads and writes. Source: Sci_TextToFind; positions are C longs there.
struct TextToFind {
    long from = 0;
    long to = 0;
    const char* text = nullptr;
    long foundStart = 0;
    long foundEnd = 0;
};

/// What kGetTextRange reads. Source: Sci_TextRange.
struct TextRange {
    long from = 0;
    long to = 0;
    char* text = nullptr;  ///< room for to - from + 1 bytes
};

}  // namespace korvant::sci
