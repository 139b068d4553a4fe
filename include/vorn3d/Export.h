// Marks what a shared build of the libraries exports, the triangulation and the geometry on it; everything
// else is hidden.
#pragma once

#if defined(VORN3D_STATIC)
#define VORN3D_EXPORT
#define VORN3D_GEOMETRY_EXPORT
#elif defined(_WIN32)
#if defined(VORN3D_BUILDING)
#define VORN3D_EXPORT __declspec(dllexport)
#else
#define VORN3D_EXPORT __declspec(dllimport)
#endif
#if defined(VORN3D_GEOMETRY_BUILDING)
#define VORN3D_GEOMETRY_EXPORT __declspec(dllexport)
#else
#define VORN3D_GEOMETRY_EXPORT __declspec(dllimport)
#endif
#else
#define VORN3D_EXPORT __attribute__((visibility("default")))
#define VORN3D_GEOMETRY_EXPORT VORN3D_EXPORT
#endif
