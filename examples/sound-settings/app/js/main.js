// The application: key handling and the night mode.
var Main = {
    onLoad: function () {
        if (!Audio.init()) {
            return;
        }
        var audio = Audio.plugin;
        audio.SetNightMode(true);
        document.getElementById("volume").innerHTML = Audio.volumeUp();
    }
};
