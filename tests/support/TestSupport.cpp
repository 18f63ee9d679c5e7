// Keeps the library non-empty while it has no helper yet.
