// A library that is no engine; and one that a module needs and does not find.
extern "C" __attribute__((visibility("default"))) int brindlecamAbsent()
{
    return 1;
}
