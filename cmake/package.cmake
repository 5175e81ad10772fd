# Install rules; the package files are added here.
