// Nothing of its own: the target that this file stands for holds the precompiled headers.
