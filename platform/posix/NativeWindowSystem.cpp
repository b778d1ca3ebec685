namespace Platform {

class WindowSystem;

/// This system's windows are not served yet: an editor opens only where another window system is put in place.
WindowSystem *nativeWindowSystem() { return nullptr; }

} // namespace Platform
