#include "app/kestrelmain.h"

int main(int argc, char **argv)
{
    return kestrelMain(argc, argv, "J1939 Kestrel");
}
