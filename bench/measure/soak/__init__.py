"""Hours of random jobs and random faults against one component, and what must hold meanwhile."""
