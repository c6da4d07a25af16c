var Volume = {
    level : 10
};

Volume.init = function () {
    audio=document.embeds[1];
    Volume.level = audio.GetVolume();
    audio.SetMute(false);
    Volume.show();
};

Volume.show = function () {
    document.getElementById("volume").innerHTML = "Volume " + Volume.level;
};
