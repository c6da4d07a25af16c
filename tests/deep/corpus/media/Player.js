var Player = {
    plugin: null,
    init: function () {
        this.plugin = document.getElementById("pluginPlayer");
        this.plugin.SetDisplayArea(0, 0, 960, 540);
        this.plugin.OnBufferingComplete = "Player.onBuffered";
    },
    play: function (url) {
        this.plugin.Play(url);
    },
    deinit: function () {
        Player.plugin.Stop();
    }
};

var Audio = {
    init: function () {
        this.plugin = document.getElementById('pluginAudio');
        var volume = this.plugin.GetVolume();
        return volume;
    }
};

var Display = {};
function showTime(clock) {
    return clock.GetTimeZone();
}
showTime(document.getElementById("pluginTime"));
