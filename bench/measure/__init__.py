"""What the measuring commands share: staging, both ways of converting, and reading the results."""
