"""What tools/make-examples is made of: one module for each document, and their common parts."""
