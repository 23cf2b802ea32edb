"""What tests of faults share: a user's world, documents that keep a stage busy, moments in the middle of a stage, and the
damage that is done there.

A row of the matrix (rows.py) names a fault, a stage, the moment at which the fault strikes and what becomes of the
documents. `test_faults.py` makes a test of each row and, with -v, prints the matrix when it ends.
"""
