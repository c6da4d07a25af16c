var Main = {
    selected: 0
};

Display.pluginTime = document.getElementById("pluginTime");

Main.onLoad = function () {
    Player.init();
    Audio.init();
    // Player.plugin.Commented();
    var now = Display.pluginTime.GetEpochTime();
    Main.keyDown(now);
};

Main.keyDown = function (key) {
    switch (key) {
    case 1:
        Audio.plugin.SetVolumeWithKey(0);
        break;
    case 2:
        Player.plugin.JumpForward(10);
        break;
    default:
        var p = Player.plugin;
        p.Stop();
    }
};
