// Wraps the audio plug-in: the object is bound once, in init.
var Audio = {
    plugin: null,

    init: function () {
        this.plugin = document.getElementById("pluginAudio");
        return this.plugin != null;
    },

    volumeUp: function () {
        var level = this.plugin.GetVolume();
        this.plugin.SetVolume(level + 1);
        return level + 1;
    }
};
