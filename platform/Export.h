#pragma once

/// Marks a function that a library of this folder offers; everything else stays inside.
#define ZOR_PLATFORM_EXPORT __attribute__((visibility("default")))
