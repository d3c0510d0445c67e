// Gives the shared precompiled header a target to live in.
