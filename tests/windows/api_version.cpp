// Stands in for what the SDK's rxapi.lib brings into every module and the .def file gives away.
extern "C" void* acrxGetApiVersion();
extern "C" void* acrxGetApiVersion() {
    static int version = 25;
    return &version;
}
