-- hosts-ardour.lua SESSION_FOLDER SAMPLE_RATE: creates a session with the effect on a stereo track
local session = assert(create_session(arg[1], "song", tonumber(arg[2])), "the session could not be created")
local tracks = session:new_audio_track(2, 2, nil, 1, "song", ARDOUR.PresentationInfo.max_order, ARDOUR.TrackMode.Normal, true)
for track in tracks:iter() do
    local effect = ARDOUR.LuaAPI.new_plugin(session, "Tessarine", ARDOUR.PluginType.LXVST, "")
    assert(not effect:isnil(), "Ardour did not find the effect")
    assert(track:add_processor_by_index(effect, 0, nil, true) == 0, "the effect could not be added to the track")
end
session:save_state("")
close_session()
