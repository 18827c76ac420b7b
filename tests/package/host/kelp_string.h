// A header of the host's. The library has one of the same name.
struct HostString {};
