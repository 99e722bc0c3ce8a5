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
   opened. Where several files were open, it is that of the text which the host gets. A host that
   keeps its texts in files should not write another file's text into its own. Only a module with
   windows has this function. */
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

/* The buttons of boxes, as answers. */
enum KorvantButton {
    KORVANT_BUTTON_NONE = 0, /* the box was closed and has no button for that */
    KORVANT_BUTTON_OK = 1,
    KORVANT_BUTTON_CANCEL = 2,
    KORVANT_BUTTON_ABORT = 3,
    KORVANT_BUTTON_RETRY = 4,
    KORVANT_BUTTON_IGNORE = 5,
    KORVANT_BUTTON_YES = 6,
    KORVANT_BUTTON_NO = 7,
    KORVANT_BUTTON_TRY_AGAIN = 10,
    KORVANT_BUTTON_CONTINUE = 11,
    KORVANT_BUTTON_SKIP = 14,
    KORVANT_BUTTON_SKIP_ALL = 15,
    KORVANT_BUTTON_IGNORE_ALL = 16,
    KORVANT_BUTTON_YES_TO_ALL = 19,
    KORVANT_BUTTON_NO_TO_ALL = 20,
    KORVANT_BUTTON_STOP_SCRIPT = 32
};

enum KorvantBoxKind {
    KORVANT_BOX_MESSAGE = 0,
    KORVANT_BOX_RUN_REPORT = 1, /* how a run ended, or what it could not write */
    KORVANT_BOX_INTEGER = 2,    /* asks for a number of 32 bits */
    KORVANT_BOX_REAL = 3,
    KORVANT_BOX_TEXT = 4
};

/* A box's style: one set of buttons and one icon, added. */
enum KorvantBoxStyle {
    KORVANT_BOX_OK = 0,
    KORVANT_BOX_OK_CANCEL = 1,
    KORVANT_BOX_ABORT_RETRY_IGNORE = 2,
    KORVANT_BOX_YES_NO_CANCEL = 3,
    KORVANT_BOX_YES_NO = 4,
    KORVANT_BOX_RETRY_CANCEL = 5,
    KORVANT_BOX_ERROR = 16,
    KORVANT_BOX_QUESTION = 32,
    KORVANT_BOX_WARNING = 48,
    KORVANT_BOX_INFORMATION = 64
};

/* A box that a script opens, or one of the host's own. Texts are bytes as scripts give them. */
typedef struct KorvantBox {
    uint32_t size;  /* sizeof(KorvantBox), set by whoever makes the record */
    int32_t kind;   /* KorvantBoxKind */
    uint32_t style; /* KorvantBoxStyle */
    int32_t markup; /* non-zero: `text` and `details` are HTML */
    const char* caption;
    const char* text;
    const char* details; /* shown on request; empty or null: none */
    const char* offered; /* what a question offers as its answer, as text */
    /* Of the host's own boxes. */
    uint32_t countdownSeconds; /* 0: none; else what Return presses is chosen at the end */
    int32_t offerDoNotShow;    /* non-zero: the user may have the answer kept, under the two names;
                                  then it is given without a box */
    const char* company;
    const char* module;
    /* Of boxes that a script opens: their buttons from first to last, and what these say. */
    uint32_t buttonCount;
    const int32_t* buttons;      /* KorvantButton */
    const char* const* captions; /* in the language of the form */
    int32_t closeButton;         /* what closing the box answers */
} KorvantBox;

/* Shows a box of the host's own (KORVANT_BOX_MESSAGE) and gives the KorvantButton that was chosen;
   none when there is nobody to ask. */
KORVANTIDE_API int32_t KORVANTIDE_CALL ShowScriptBox(const KorvantBox* box);

/* How a host answers a box. */
typedef struct KorvantBoxAnswer {
    uint32_t size;    /* sizeof(KorvantBoxAnswer), set by the module */
    int32_t button;   /* of a message: one of its buttons. Of a question: KORVANT_BUTTON_OK, or
                         anything else for "closed", which answers what was offered. The module
                         sets it to `closeButton` */
    double number;    /* the answer to KORVANT_BOX_INTEGER (rounded towards zero) and _REAL */
    const char* text; /* the answer to KORVANT_BOX_TEXT; read before anything else happens */
} KorvantBoxAnswer;

/* What a host is told of while its scripts run, so that a server or a window of its own can show
   it. Each may be null. They are called on the thread of the entry points, inside the call that
   builds or runs; what they are handed lives until they return. Only RequestScriptStop and
   functions that ask for results may be called from inside. */
typedef struct KorvantCallbacks {
    uint32_t size; /* sizeof(KorvantCallbacks), set by the caller */
    void* user;    /* handed to each; not looked at */
    /* What a script prints to the console, `count` bytes. Non-zero: the console is not to show it.
       Text that goes into a file of the script does not come here. */
    int32_t(KORVANTIDE_CALL* print)(void* user, const char* bytes, uint64_t count);
    /* Each message of a build, when the build is over. */
    void(KORVANTIDE_CALL* message)(void* user, const KorvantBuildMessage* message);
    /* Each message box and question of a script, before it is answered or shown. */
    void(KORVANTIDE_CALL* box)(void* user, const KorvantBox* box);
    /* Non-zero: `answer` holds the answer and nothing is shown. 0: it is shown as usual. The time
       limit of the run stands still meanwhile. */
    int32_t(KORVANTIDE_CALL* answerBox)(void* user, const KorvantBox* box,
                                        KorvantBoxAnswer* answer);
} KorvantCallbacks;

/* From now on, in place of those before; copied. Null: none any more. 1, or 0 when `size` makes no
   sense or while a script runs. */
KORVANTIDE_API int32_t KORVANTIDE_CALL SetScriptCallbacks(const KorvantCallbacks* callbacks);

/* Writes what scripts can call on `engine` (an asIScriptEngine*) into a file, for tools: as JSON
   for `korvant lsp --api FILE`, which then knows the host's functions without the host, or, where
   the file's name ends in ".predefined" (as.predefined), as the declarations that other tools for
   this language read. UTF-8 path on Windows, the system's bytes elsewhere. A file that is there is
   replaced. 1, or 0 when it cannot be written. */
KORVANTIDE_API int32_t KORVANTIDE_CALL ExportScriptApi(void* engine, const char* path);

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
