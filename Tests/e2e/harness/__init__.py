"""Drives the real program from outside: display, pages, proxy, keys, accessibility, saved state."""
