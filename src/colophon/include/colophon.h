/* The colophon: who made the program and where it lives. A library of its own, loaded when it is first asked
 * for; without it the two commands do nothing. Both functions are for the main thread. */
#ifndef COLOPHON_H
#define COLOPHON_H

#if defined(_WIN32)
#define COLOPHON_API __declspec(dllexport)
#else
#define COLOPHON_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Shows the about box over the active window and returns when it is closed. `application` is the program's
 * QApplication. */
COLOPHON_API void ShowAbout(void* application);

/* Opens the program's homepage in the browser; returns at once. */
COLOPHON_API void NavigateToHomePage(void);

#ifdef __cplusplus
}
#endif

#endif
