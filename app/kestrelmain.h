#pragma once

// The program of every edition; the editions differ in the application name alone.
int kestrelMain(int argc, char **argv, const char *applicationName);
