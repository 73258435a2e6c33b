// Empty: Qt includes it where it takes the system for macOS.
