/*
 * Remote-control key codes of the platform, through the common helper.
 */
var tvKey = new Common.API.TVKeyValue();

var Keys = {
    UP : tvKey.KEY_UP,
    DOWN : tvKey.KEY_DOWN,
    LEFT : tvKey.KEY_LEFT,
    RIGHT : tvKey.KEY_RIGHT,
    ENTER : tvKey.KEY_ENTER,
    RETURN : tvKey.KEY_RETURN,
    CH_UP : tvKey.KEY_CH_UP,
    CH_DOWN : tvKey.KEY_CH_DOWN
};
