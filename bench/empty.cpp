// An empty library.
