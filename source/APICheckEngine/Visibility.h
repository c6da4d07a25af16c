// Marks the symbols that the shared library exports; everything else is hidden.
#pragma once
#define TARVO_EXPORT __attribute__((visibility("default")))
