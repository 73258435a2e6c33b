/* plain_reader FOLDER: lists the package folders of FOLDER/node_modules and reads each package.json and LICENSE,
 * one after the other, and does nothing with them. What a scan has to do at the least, to measure it against.
 * plain_reader --list FILE: lists and reads what the lines of the file name, folders with a slash at their end. For trees
 * that are not as regular as generated ones; a trace of a scan's calls of open says what it listed and read. */
#define _DEFAULT_SOURCE
#include <dirent.h>
#include <fcntl.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static char buffer[1 << 20];
static long packages, bytes;

static void readFile(const char* path) {
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return;
    }
    struct stat status;
    if (fstat(file, &status) == 0) {
        ssize_t got = 0;
        do {
            got = read(file, buffer, sizeof buffer);
            bytes += got > 0 ? got : 0;
        } while (got == (ssize_t)sizeof buffer);
    }
    close(file);
}

static void readPackage(const char* folder) {
    DIR* listing = opendir(folder);
    if (listing == NULL) {
        return;
    }
    ++packages;
    for (struct dirent* entry = readdir(listing); entry != NULL; entry = readdir(listing)) {
        if (strcmp(entry->d_name, "package.json") == 0 || strncmp(entry->d_name, "LICENSE", 7) == 0) {
            char path[4096];
            snprintf(path, sizeof path, "%s/%s", folder, entry->d_name);
            readFile(path);
        }
    }
    closedir(listing);
}

static void readModules(const char* folder) {
    DIR* listing = opendir(folder);
    if (listing == NULL) {
        return;
    }
    for (struct dirent* entry = readdir(listing); entry != NULL; entry = readdir(listing)) {
        char path[4096];
        if (entry->d_name[0] == '.') {
            continue;
        }
        snprintf(path, sizeof path, "%s/%s", folder, entry->d_name);
        if (entry->d_name[0] == '@') {
            readModules(path);
        } else {
            readPackage(path);
        }
    }
    closedir(listing);
}

static void listFolder(const char* path) {
    DIR* listing = opendir(path);
    if (listing == NULL) {
        return;
    }
    ++packages;
    while (readdir(listing) != NULL) {
    }
    closedir(listing);
}

static void readList(const char* list) {
    char path[4096];
    FILE* const lines = fopen(list, "r");
    while (lines != NULL && fgets(path, sizeof path, lines) != NULL) {
        const size_t length = strcspn(path, "\n");
        path[length] = '\0';
        if (length > 0 && path[length - 1] == '/') {
            listFolder(path);
        } else {
            readFile(path);
        }
    }
    if (lines != NULL) {
        fclose(lines);
    }
}

int main(int count, char** arguments) {
    char path[4096];
    if (count == 3 && strcmp(arguments[1], "--list") == 0) {
        readList(arguments[2]);
    } else if (count == 2) {
        snprintf(path, sizeof path, "%s/node_modules", arguments[1]);
        readModules(path);
    } else {
        return 2;
    }
    printf("%ld folders, %ld bytes\n", packages, bytes);
    return 0;
}
