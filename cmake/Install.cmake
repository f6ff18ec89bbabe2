# What is installed, and where.
