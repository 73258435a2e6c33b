# Packages: see below.
