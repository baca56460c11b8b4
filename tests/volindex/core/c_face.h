/* What a C program asks of the library. */
#ifndef C_FACE_H
#define C_FACE_H
#include <stdint.h>
#ifdef __cplusplus
extern "C"
#else
#include <uchar.h>
#endif
    /* The numbers of files and folders below the path. */
    uint32_t
    CountInC(const char16_t* path, uint32_t* folders);
#endif
