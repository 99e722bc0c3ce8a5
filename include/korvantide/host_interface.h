/* Plain C functions beside the entry points of korvantide.h: limits, and what became of a build or
   a run. For hosts in any language, and for those that ask nobody through windows. Call them on the
   thread of the entry points unless it says otherwise. Nothing is thrown and no memory changes
   hands: a text belongs to the module and stays until the next call of an entry point. */
#ifndef KORVANTIDE_HOST_INTERFACE_H
#define KORVANTIDE_HOST_INTERFACE_H

#include <stdint.h>

#include "korvantide/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* What scripts may open. */
enum KorvantFileAccess {
    KORVANT_FILES_ALL = 0,
    KORVANT_FILES_READ_ONLY = 1,
    KORVANT_FILES_ONE_FOLDER = 2, /* read and write inside `fileFolder` */
    KORVANT_FILES_NONE = 3
};

/* Bounds of all scripts of the process. Fill it with GetScriptLimits, change what should differ and
   hand it to SetScriptLimits; fields that a later version adds keep their defaults that way. */
typedef struct KorvantLimits {
    uint32_t size;                  /* sizeof(KorvantLimits), set by the caller */
    uint32_t callDepth;             /* calls inside each other; only where the engine has none */
    uint64_t stringBytes;           /* one string */
    uint64_t runBytes;              /* all strings and objects of a run */
    uint64_t scriptBytes;           /* a script's text */
    uint64_t scriptTokens;          /* tokens of a script's text */
    uint64_t nameBytes;             /* one name; 255 counts only where the engine is not ours */
    uint64_t hardCeilingMs;         /* a whole run, waiting for the user included; 0: none */
    uint32_t nesting;               /* brackets inside each other */
    uint32_t boxesBeforeStopButton; /* message boxes in a run before "Stop the script"; 0: never */
    int32_t endOfInputEndsRun;      /* non-zero: reading past the end of the input stops the run */
    int32_t restoreLocaleAfterRun;  /* non-zero: setLocale of a script ends with its run */
    int32_t fileAccess;             /* KorvantFileAccess */
    const char* fileFolder;         /* with KORVANT_FILES_ONE_FOLDER; copied; null: none */
    int32_t guardBuilds;            /* non-zero (the default): where the engine is not the hardened
                                       build, each text is compiled in a child process first, and
                                       one that kills the compiler is a build error. Costs a second
                                       compile, 10 ms at the first one and 1 to 5 ms at each. With
                                       the hardened engine it costs nothing. */
} KorvantLimits;

/* Fills what `limits->size` has room for with the limits in force. */
KORVANTIDE_API void KORVANTIDE_CALL GetScriptLimits(KorvantLimits* limits);
/* Fills it with bounds for scripts that nobody has read: seconds, megabytes, no files. They come
   into force with SetScriptLimits. */
KORVANTIDE_API void KORVANTIDE_CALL GetStrictScriptLimits(KorvantLimits* limits);
/* In force from the next compile or run. Null brings the defaults back. 1, or 0 when `size` or
   `fileAccess` makes no sense: nothing changes then. */
KORVANTIDE_API int32_t KORVANTIDE_CALL SetScriptLimits(const KorvantLimits* limits);

/* A line, without its line feed, that scripts read with Input before what the user types. Kept
   until it is read. 1, or 0 when the console cannot take it. */
KORVANTIDE_API int32_t KORVANTIDE_CALL FeedScriptInput(const char* line);

/* How the last run ended. */
enum KorvantRunEnd {
    KORVANT_RUN_FINISHED = 0, /* or is suspended at a line */
    KORVANT_RUN_NOT_BUILT = 1,
    KORVANT_RUN_NO_MAIN = 2,
    KORVANT_RUN_NOT_PREPARED = 3,
    KORVANT_RUN_TIMED_OUT = 4,
    KORVANT_RUN_STOPPED = 5, /* by RequestScriptStop, Ctrl+C, Escape, or a button */
    KORVANT_RUN_EXCEPTION = 6,
    KORVANT_RUN_FAILED_OTHERWISE = 7
};

typedef struct KorvantRunResult {
    uint32_t size;       /* sizeof(KorvantRunResult), set by the caller */
    int32_t end;         /* KorvantRunEnd */
    int32_t line;        /* 1-based line of the failure; 0: unknown */
    uint32_t unwritten;  /* how many files could not be written; see GetUnwrittenFile */
    const char* message; /* as the user was told it; empty, never null */
    uint32_t frames;     /* how many calls GetRunFrame knows; 0 where nothing failed in a script */
    uint32_t calls;      /* how many there were when the run failed */
} KorvantRunResult;

/* A call that had not returned when the run failed. */
typedef struct KorvantRunFrame {
    uint32_t size;        /* sizeof(KorvantRunFrame), set by the caller */
    int32_t line;         /* 1-based; 0 in a function of the library */
    const char* function; /* "int Class::method(int)" */
    const char* source;   /* empty for the main text */
} KorvantRunFrame;

KORVANTIDE_API void KORVANTIDE_CALL GetLastRunResult(KorvantRunResult* result);
/* The innermost call is 0. 1, or 0 beyond the last one. */
KORVANTIDE_API int32_t KORVANTIDE_CALL GetRunFrame(uint32_t index, KorvantRunFrame* frame);
/* "could not write FILE: reason"; null beyond the last one. */
KORVANTIDE_API const char* KORVANTIDE_CALL GetUnwrittenFile(uint32_t index);

enum KorvantMessageKind {
    KORVANT_MESSAGE_ERROR = 0,
    KORVANT_MESSAGE_WARNING = 1,
    KORVANT_MESSAGE_INFORMATION = 2
};

typedef struct KorvantBuildMessage {
    uint32_t size;    /* sizeof(KorvantBuildMessage), set by the caller */
    int32_t kind;     /* KorvantMessageKind */
    int32_t row;      /* 1-based; 0 or less: no line */
    int32_t column;   /* 1-based */
    const char* text; /* the compiler's words */
} KorvantBuildMessage;

/* Messages of the last build, at most 1,000. */
KORVANTIDE_API uint32_t KORVANTIDE_CALL CountBuildMessages(void);
/* 1, or 0 beyond the last one. */
KORVANTIDE_API int32_t KORVANTIDE_CALL GetBuildMessage(uint32_t index,
                                                       KorvantBuildMessage* message);

/* Says that the text which the next RunScriptEditor is given is this file's: the editor then shows
   its name, Save writes it, Exit with changes asks, and closing the window writes a changed text.
   UTF-8 on Windows, the system's bytes elsewhere; copied, and forgotten by that call. Only a module
   with windows has this function. */
KORVANTIDE_API void KORVANTIDE_CALL SetEditedFile(const char* path);

/* The file whose text was in the editor when RunScriptEditor returned, because the user opened or
   saved one or asked for a new text; empty when it was the host's own text; null when no editor was
   opened. A host that keeps its texts in files should not write another file's text into its own.
   Only a module with windows has this function. */
KORVANTIDE_API const char* KORVANTIDE_CALL GetEditedFile(void);

/* How the script editor's window is laid out. */
enum KorvantEditorLayout {
    KORVANT_EDITOR_AS_CHOSEN = 0, /* by the user under View; everything in view at first */
    KORVANT_EDITOR_CLASSIC = 1,   /* menu, text and output pane alone, in the classic colours */
    KORVANT_EDITOR_FULL = 2       /* toolbar, panes and status bar */
};
/* For the next opening of the editor. The user can still change it there. 1, or 0 when `layout` is
   none of these. Only a module with windows has this function. */
KORVANTIDE_API int32_t KORVANTIDE_CALL SetEditorLayout(int32_t layout);

/* Ends the run that is under way as soon as it can be ended. Safe from any thread and from a signal
   handler. */
KORVANTIDE_API void KORVANTIDE_CALL RequestScriptStop(void);

/* How scripts of this process can be looked at with a debugging client of the user's choice. */
typedef struct KorvantDebugOptions {
    uint32_t size;          /* sizeof(KorvantDebugOptions), set by the caller */
    int32_t port;           /* of the loopback, 1 to 65535; 0: any free one */
    const char* token;      /* what a client must show; copied; null or empty is refused, because
                               whoever knows it can evaluate code in this process */
    const char* sourceFile; /* the file that the scripts come from, UTF-8; copied; null: the one
                               that the client names */
    int32_t waitForClient;  /* non-zero: the first run begins when a client has set it up */
    void (*whileStopped)(void* user); /* on the script's thread, every 50 ms while a script is
                                         stopped: the host's own repaint; null: none */
    void* user;
} KorvantDebugOptions;

/* Listens on 127.0.0.1 for one client at a time that speaks the Debug Adapter Protocol and attaches
   with the token. Runs of scripts can then be stopped, looked at and stepped through; while one is
   stopped, the entry point that started it has not returned, and time limits stand still. A client
   that leaves takes its breakpoints with it, and the script goes on. Call it on the thread of the
   entry points, while no script runs. The port, or 0 when it cannot be had or a server runs. */
KORVANTIDE_API int32_t KORVANTIDE_CALL StartScriptDebugServer(const KorvantDebugOptions* options);
/* Sends a client away and closes the port. Nothing when no server runs, or from inside a run. */
KORVANTIDE_API void KORVANTIDE_CALL StopScriptDebugServer(void);
/* Tells a client that this process runs no more scripts and would exit with this code. */
KORVANTIDE_API void KORVANTIDE_CALL TellScriptDebugExit(int32_t exitCode);

#ifdef __cplusplus
}
#endif

#endif
