// A module that can't be loaded, because a library it needs is not found.
extern "C" int brindlecamAbsent();

extern "C" __attribute__((visibility("default"))) void* brindlecamTextEngine3()
{
    return brindlecamAbsent() == 0 ? reinterpret_cast<void*>(&brindlecamAbsent) : nullptr;
}
