#pragma once

/// Releases the header records that deleted adapters left alone, which is deliberate, and answers how many
/// there were. No stack of theirs has names once the library is unloaded, so the leak checker can't pass them
/// over.
///
/// LostHeaders.cpp defines two functions of the image library; a program's own come before those of the
/// library, which they call in their turn, when the program exports its symbols.
int releaseLostHeaders();
