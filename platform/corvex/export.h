// The mark of what applications may call.
//
// The library is built with hidden visibility: only what carries `NODELINE_API` can be reached from
// outside the shared library. In the static library, and in whatever links it, `NODELINE_STATIC` is
// defined and the mark is empty.
#pragma once

// Stands before the name of a class, or before a function.
#if defined(NODELINE_STATIC)
#define NODELINE_API
#else
#define NODELINE_API __attribute__((visibility("default")))
#endif
