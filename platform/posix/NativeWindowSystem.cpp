namespace Platform {

class WindowSystem;

/// No native windows on this system: an editor opens only after useWindowSystem().
WindowSystem *nativeWindowSystem() { return nullptr; }

} // namespace Platform
