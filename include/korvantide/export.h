/* Visibility of what the module exports. */
#ifndef KORVANTIDE_EXPORT_H
#define KORVANTIDE_EXPORT_H

#if defined(_WIN32)
#if defined(KORVANTIDE_BUILD)
#define KORVANTIDE_API __declspec(dllexport)
#else
#define KORVANTIDE_API __declspec(dllimport)
#endif
#define KORVANTIDE_CALL __cdecl
#else
#define KORVANTIDE_API __attribute__((visibility("default")))
#define KORVANTIDE_CALL
#endif

#endif
