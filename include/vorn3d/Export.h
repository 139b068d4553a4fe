// Marks what a shared build of the library exports; everything else is hidden.
#pragma once

#if defined(VORN3D_STATIC)
#define VORN3D_EXPORT
#elif defined(_WIN32)
#if defined(VORN3D_BUILDING)
#define VORN3D_EXPORT __declspec(dllexport)
#else
#define VORN3D_EXPORT __declspec(dllimport)
#endif
#else
#define VORN3D_EXPORT __attribute__((visibility("default")))
#endif
