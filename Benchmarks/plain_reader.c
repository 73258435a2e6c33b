/* plain_reader FOLDER: lists the package folders of FOLDER/node_modules and reads each package.json and LICENSE,
 * one after the other, and does nothing with them. What a scan has to do at the least, to measure it against. */
#define _DEFAULT_SOURCE
#include <dirent.h>
#include <fcntl.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static char buffer[1 << 20];
static long packages, bytes;

static void readFile(const char* folder, const char* name) {
    char path[4096];
    snprintf(path, sizeof path, "%s/%s", folder, name);
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return;
    }
    struct stat status;
    if (fstat(file, &status) == 0) {
        const ssize_t got = read(file, buffer, sizeof buffer);
        bytes += got > 0 ? got : 0;
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
            readFile(folder, entry->d_name);
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

int main(int count, char** arguments) {
    char path[4096];
    if (count != 2) {
        return 2;
    }
    snprintf(path, sizeof path, "%s/node_modules", arguments[1]);
    readModules(path);
    printf("%ld packages, %ld bytes\n", packages, bytes);
    return 0;
}
